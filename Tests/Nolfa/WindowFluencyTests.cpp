// The window stays fluent, whatever is dropped on it: a promise about time, measured as the best of several runs, with
// everything drawn by the processor.

#include "DesignSystem/Fonts.h"
#include "Nolfa/App/AppModel.h"
#include "Nolfa/Support/Fluency.h"
#include "Nolfa/Support/ManualClock.h"
#include "Nolfa/Support/OffscreenApplication.h"
#include "Nolfa/Support/RecordingDesktop.h"
#include "Platform/Bundle.h"
#include "Support/TemporaryFolder.h"

#include <QQmlEngine>
#include <QQuickView>
#include <QSettings>

using namespace nolfa;
using namespace nolfa::testing;

TEST(WindowFluency, tenThousandFilesNeverHoldTheWindowUp)
{
    ensureOffscreenApplication();
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    Fonts::registerIfNeeded(Bundle::main());
    const TemporaryFolder folder;
    const QList<QUrl> files = manyFiles(10'000);
    int runs = 0;
    expectFluent(Milliseconds(50), [&] {
        const std::filesystem::path settings = folder / ("settings" + std::to_string(++runs));
        AppModel app(std::make_unique<QSettings>(QString::fromStdString(settings.native()), QSettings::IniFormat),
            {.service = std::make_shared<SwiftService>(),
                .clock = std::make_shared<ManualClock>(),
                .desktop = std::make_shared<RecordingDesktop>()});
        QQuickView view;
        view.engine()->addImportPath("qrc:/qt/qml");
        view.setResizeMode(QQuickView::SizeRootObjectToView);
        view.setInitialProperties({{"app", QVariant::fromValue<QObject *>(&app)}});
        view.setSource(QUrl("qrc:/qt/qml/Nolfa/App/RootView.qml"));
        view.resize(820, 560);
        view.show();
        for (int turn = 0; turn < 20; ++turn)
            QCoreApplication::processEvents();
        return measureUse(*app.convert(), files);
    });
}
