#pragma once

#include <QColor>
#include <QObject>
#include <qqml.h>

namespace nolfa {

/// Every colour of the program; sRGB, opaque. In C++ because Qt Quick has a `Palette` too, and of two types of C++ the
/// one imported first is taken: import this module before QtQuick.
class Palette : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QColor paper MEMBER paper CONSTANT)
    Q_PROPERTY(QColor surface MEMBER surface CONSTANT)
    Q_PROPERTY(QColor mist MEMBER mist CONSTANT)
    Q_PROPERTY(QColor ink MEMBER ink CONSTANT)
    Q_PROPERTY(QColor slate MEMBER slate CONSTANT)
    Q_PROPERTY(QColor stone MEMBER stone CONSTANT)
    Q_PROPERTY(QColor line MEMBER line CONSTANT)
    Q_PROPERTY(QColor burgundy MEMBER burgundy CONSTANT)
    Q_PROPERTY(QColor burgundyDark MEMBER burgundyDark CONSTANT)
    Q_PROPERTY(QColor gold MEMBER gold CONSTANT)
    Q_PROPERTY(QColor success MEMBER success CONSTANT)
    Q_PROPERTY(QColor warning MEMBER warning CONSTANT)
    Q_PROPERTY(QColor info MEMBER info CONSTANT)
    Q_PROPERTY(QColor error MEMBER error CONSTANT)

public:
    /// A colour at an opacity of 0 to 1.
    Q_INVOKABLE [[nodiscard]] QColor tint(const QColor &color, double opacity) const
    {
        QColor tinted = color;
        tinted.setAlphaF(static_cast<float>(opacity));
        return tinted;
    }

    const QColor paper{0xFB, 0xF9, 0xF4}; ///< window background
    const QColor surface{0xFF, 0xFF, 0xFF}; ///< wells and cards
    const QColor mist{0xF7, 0xEF, 0xE0}; ///< soft fills, chips, table headers
    const QColor ink{0x1A, 0x17, 0x14}; ///< main text
    const QColor slate{0x5B, 0x60, 0x68}; ///< secondary text
    const QColor stone{0xD6, 0xCD, 0xBD}; ///< quiet borders and marks
    const QColor line{0xE3, 0xDA, 0xCB}; ///< hairlines and card borders
    const QColor burgundy{0x6E, 0x24, 0x33}; ///< accent and primary action
    const QColor burgundyDark{0x51, 0x1A, 0x26}; ///< pressed primary action and shadows
    const QColor gold{0xB8, 0x91, 0x5E}; ///< the middle quality tier
    const QColor success{0x2D, 0x6A, 0x4F};
    const QColor warning{0xB8, 0x86, 0x0B}; ///< warning, lowest quality tier
    const QColor info{0x4A, 0x6F, 0xA5};
    const QColor error{0x9B, 0x23, 0x35};
};

} // namespace nolfa
