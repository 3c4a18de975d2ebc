#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QString>
#include <qqml.h>

namespace nolfa {

/// A small drawing in one colour, by name: one of the files in the folder Symbols. Sharp at every scale, with every
/// renderer. Says nothing to assistive technology: what it stands beside does.
class Symbol : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)

public:
    explicit Symbol(QQuickItem *parent = nullptr);

    [[nodiscard]] QString name() const { return m_name; }
    void setName(const QString &name);
    [[nodiscard]] QColor color() const { return m_color; }
    void setColor(const QColor &color);

    void paint(QPainter *painter) override;

signals:
    void nameChanged();
    void colorChanged();

private:
    QString m_name;
    QByteArray m_drawing; ///< SVG that draws with `currentColor`
    QColor m_color = Qt::black;
};

} // namespace nolfa
