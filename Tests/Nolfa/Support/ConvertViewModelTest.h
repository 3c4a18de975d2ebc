#pragma once

#include "Nolfa/App/AppSettings.h"
#include "Nolfa/Features/Convert/ConvertViewModel.h"
#include "Nolfa/Support/EventLoop.h"
#include "Nolfa/Support/HeldService.h"
#include "Nolfa/Support/ManualClock.h"
#include "Nolfa/Support/RecordingDesktop.h"
#include "Support/Scopes.h"
#include "Support/TemporaryFolder.h"

#include <QAbstractItemModelTester>
#include <QSettings>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

namespace nolfa::testing {

using Case = ConvertItem::State::Case;
using Files = std::vector<std::filesystem::path>;

/// The model of the convert tool with conversions, time and desktop in the hands of a test.
class ConvertViewModelTest : public ::testing::Test {
protected:
    ConvertViewModelTest() { ensureApplication(); }
    ~ConvertViewModelTest() override
    {
        // Nothing more comes once the queue is gone.
        m_model.reset();
    }

    AppSettings &settings()
    {
        if (!m_settings) {
            m_settings = std::make_unique<AppSettings>(std::make_unique<QSettings>(
                QString::fromStdString((m_folder / "settings.ini").native()), QSettings::IniFormat));
        }
        return *m_settings;
    }

    /// Made at the first call; with settings, if the test asked for these before.
    ConvertViewModel &model()
    {
        if (!m_model) {
            m_model = std::make_unique<ConvertViewModel>(m_settings.get(),
                ConvertViewModel::Surroundings{
                    .service = service, .clock = clock, .desktop = desktop, .maxConcurrent = conversionsAtOnce});
            if (isChecked)
                m_tester = std::make_unique<QAbstractItemModelTester>(
                    m_model->itemModel(), QAbstractItemModelTester::FailureReportingMode::Fatal);
        }
        return *m_model;
    }

    void destroyModel()
    {
        m_tester.reset();
        m_model.reset();
    }

    void add(const Files &files) { model().add(files); }

    const ConvertItem &row(std::size_t index) { return model().items().at(index); }

    void press() { model().convertAll(); }

    [[nodiscard]] bool comesTo(std::size_t index, Case value)
    {
        return spinUntil([&] { return row(index).is(value); });
    }

    [[nodiscard]] bool runs(std::size_t calls)
    {
        return spinUntil([&] { return service->calls().size() == calls; });
    }

    /// Waits until everything that ended so far has been told.
    void settleDown()
    {
        const bool isQuiet = spinUntil([&] { return service->inside() == 0; });
        EXPECT_TRUE(isQuiet);
        for (int turn = 0; turn < 20; ++turn) {
            QCoreApplication::processEvents();
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }

    std::shared_ptr<HeldService> service = std::make_shared<HeldService>();
    std::shared_ptr<ManualClock> clock = std::make_shared<ManualClock>();
    std::shared_ptr<RecordingDesktop> desktop = std::make_shared<RecordingDesktop>();
    int conversionsAtOnce = 2;
    /// Whether every change is held against the rules of item models, which takes time for each row.
    bool isChecked = true;

private:
    const TemporaryFolder m_folder;
    const LanguageScope m_language{NolfaLanguage::en};
    const LocaleScope m_locale{NolfaFormat::locale()};
    std::unique_ptr<AppSettings> m_settings;
    std::unique_ptr<ConvertViewModel> m_model;
    std::unique_ptr<QAbstractItemModelTester> m_tester;
};

/// Counts how often a signal comes.
template <typename Sender, typename Signal> std::shared_ptr<int> countOf(Sender *sender, Signal signal)
{
    auto count = std::make_shared<int>(0);
    QObject::connect(sender, signal, sender, [count] { ++*count; });
    return count;
}

} // namespace nolfa::testing
