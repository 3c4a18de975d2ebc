#include "DesignSystem/Fonts.h"
#include "Platform/Bundle.h"

#include <QFontInfo>
#include <QGuiApplication>
#include <QQmlContext>
#include <QQmlEngine>
#include <QRawFont>
#include <QtQuickTest>

/// What the tests may ask of the machine around them.
class Surroundings : public QObject {
    Q_OBJECT

public:
    /// As the user's choice in the desktop's settings arrives.
    Q_INVOKABLE void setTextSize(double points)
    {
        QFont font = QGuiApplication::font();
        font.setPointSizeF(points);
        QGuiApplication::setFont(font);
    }

    /// The PostScript name of the font that is drawn with.
    Q_INVOKABLE QString drawnWith(const QFont &font)
    {
        const QByteArray table = QRawFont::fromFont(font).fontTable("name");
        const auto number
            = [&table](qsizetype at) { return static_cast<uchar>(table[at]) << 8 | static_cast<uchar>(table[at + 1]); };
        constexpr int header = 6;
        constexpr int record = 12;
        constexpr int postScriptName = 6;
        constexpr int windows = 3;
        for (int i = 0; i < number(2); ++i) {
            const qsizetype entry = header + i * record;
            if (number(entry) != windows || number(entry + 6) != postScriptName)
                continue;
            QString name;
            for (int k = 0; k < number(entry + 8); k += 2)
                name += QChar(static_cast<ushort>(number(number(4) + number(entry + 10) + k)));
            return name;
        }
        return {};
    }
};

class Setup : public QObject {
    Q_OBJECT

public slots:
    void applicationAvailable() { nolfa::Fonts::registerIfNeeded(nolfa::Bundle::main()); }
    void qmlEngineAvailable(QQmlEngine *engine)
    {
        engine->addImportPath("qrc:/qt/qml");
        engine->rootContext()->setContextProperty("surroundings", &m_surroundings);
    }

private:
    Surroundings m_surroundings;
};

QUICK_TEST_MAIN_WITH_SETUP(DesignSystemTests, Setup)

#include "DesignSystemTests.moc"
