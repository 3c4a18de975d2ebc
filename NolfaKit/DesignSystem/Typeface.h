#pragma once

#include <QFont>
#include <QObject>
#include <QString>
#include <qqml.h>

namespace nolfa {

/// What `AppFont` stands on: QML can't give a font the family that stands in for missing characters, and isn't told
/// when the system's text size changes.
class Typeface : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    /// The system's text size, in points of 1/72 inch.
    Q_PROPERTY(double systemSize READ systemSize NOTIFY systemSizeChanged)

public:
    Typeface();

    [[nodiscard]] double systemSize() const;
    [[nodiscard]] bool eventFilter(QObject *watched, QEvent *event) override;

    /// @param weight  100 to 900
    /// @param size  in points of the screen
    /// @param tracking  between letters, in the same points
    Q_INVOKABLE [[nodiscard]] QFont font(const QString &family, int weight, double size, double tracking) const;

signals:
    void systemSizeChanged();
};

} // namespace nolfa
