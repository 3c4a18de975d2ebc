#pragma once

#include <QColor>
#include <QQuickItem>
#include <qqml.h>

namespace nolfa {

/// The soft shadow of a rounded rectangle as big as this item, drawn beyond its edges. Costs one small texture for
/// each look, whatever the size.
class Shadow : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    /// Of the corners, in points.
    Q_PROPERTY(qreal radius READ radius WRITE setRadius NOTIFY lookChanged)
    /// How far the edge is spread, in points; twice the standard deviation.
    Q_PROPERTY(qreal blur READ blur WRITE setBlur NOTIFY lookChanged)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY lookChanged)

public:
    explicit Shadow(QQuickItem *parent = nullptr);

    [[nodiscard]] qreal radius() const { return m_radius; }
    void setRadius(qreal radius);
    [[nodiscard]] qreal blur() const { return m_blur; }
    void setBlur(qreal blur);
    [[nodiscard]] QColor color() const { return m_color; }
    void setColor(const QColor &color);

signals:
    void lookChanged();

protected:
    QSGNode *updatePaintNode(QSGNode *old, UpdatePaintNodeData *data) override;
    void geometryChange(const QRectF &now, const QRectF &before) override;

private:
    void lookAgain();

    qreal m_radius = 0;
    qreal m_blur = 0;
    QColor m_color = Qt::black;
};

} // namespace nolfa
