// The window stays fluent, whatever is dropped on it: promises about time, measured as the best of several runs.

#include "Nolfa/Features/Convert/ConvertViewModel.h"

#include "Engine/ConversionError.h"
#include "Nolfa/Support/EventLoop.h"
#include "Nolfa/Support/ManualClock.h"
#include "Nolfa/Support/RecordingDesktop.h"

#include <algorithm>
#include <ctime>
#include <gtest/gtest.h>
#include <map>

using namespace nolfa;
using namespace nolfa::testing;
using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

namespace {

constexpr int fileCount = 10'000;
constexpr Milliseconds longestStall{50};

/// Ends at once, every other time with a failure.
class SwiftService : public DocumentConverting {
public:
    [[nodiscard]] std::vector<DocumentFormat> supportedTargets(DocumentFormat /*source*/) const override
    {
        return {DocumentFormat::pdf, DocumentFormat::docx};
    }

    [[nodiscard]] std::filesystem::path convert(const std::filesystem::path &input, DocumentFormat /*target*/,
        const std::optional<std::filesystem::path> & /*folder*/, std::stop_token /*stop*/) const override
    {
        if (input.native().ends_with("5.md"))
            throw ConversionError::unreadableInput(input);
        return input.parent_path() / "out.pdf";
    }
};

/// How long the main thread was held up.
struct Stall {
    Milliseconds wall{0}; ///< says little while other programs want the processors too
    Milliseconds work{0}; ///< of this thread alone

    [[nodiscard]] Stall longest(const Stall &other) const
    {
        return {std::max(wall, other.wall), std::max(work, other.work)};
    }
    [[nodiscard]] Stall shortest(const Stall &other) const
    {
        return {std::min(wall, other.wall), std::min(work, other.work)};
    }
};

Milliseconds threadTime()
{
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

Stall timed(const std::function<void()> &work)
{
    const auto start = Clock::now();
    const Milliseconds before = threadTime();
    work();
    return {Clock::now() - start, threadTime() - before};
}

/// By what the thread was held up.
using Stalls = std::map<std::string, Stall>;

/// Reads, like a list on screen, the rows that show of what changed.
void watch(ConvertItemModel &model)
{
    static constexpr int shown = 20;
    const auto read = [&model](int first, int last) {
        for (int row = first; row <= std::min(last, shown); ++row) {
            for (const int role : model.roleNames().keys())
                (void)model.index(row).data(role);
        }
    };
    QObject::connect(&model, &QAbstractItemModel::dataChanged, &model,
        [read](const QModelIndex &first, const QModelIndex &last) { read(first.row(), last.row()); });
    QObject::connect(&model, &QAbstractItemModel::rowsInserted, &model,
        [read](const QModelIndex &, int first, int last) { read(first, last); });
}

Stalls measure(const QList<QUrl> &files)
{
    ConvertViewModel model(nullptr,
        {.service = std::make_shared<SwiftService>(),
            .clock = std::make_shared<ManualClock>(),
            .desktop = std::make_shared<RecordingDesktop>()});
    watch(*model.itemModel());
    const auto turnUntilIdle = [&model] {
        Stall longest;
        while (model.isConverting())
            longest = longest.longest(timed([] { QCoreApplication::processEvents(); }));
        return longest;
    };
    Stalls stalls;
    stalls["add"] = timed([&] { model.add(files); });
    stalls["add again"] = timed([&] { model.add(files); });
    stalls["convert all"] = timed([&] { model.convertAll(); });
    stalls["a turn of the event loop"] = turnUntilIdle();
    EXPECT_EQ(model.progress(), (ConvertViewModel::Progress{fileCount, fileCount}));
    stalls["change the language"] = timed([&] { model.itemModel()->retranslate(); });
    stalls["clear"] = timed([&] { model.clear(); });
    model.add(files);
    model.convertAll();
    stalls["clear while they run"] = timed([&] { model.clear(); });
    return stalls;
}

} // namespace

TEST(ConvertFluency, tenThousandFilesNeverHoldTheWindowUp)
{
    ensureApplication();
    QList<QUrl> files;
    for (int index = 0; index < fileCount; ++index)
        files.append(QUrl(QStringLiteral("file:///home/reader/Documents/a folder/%1.md").arg(index)));
    Stalls best = measure(files);
    for (int repetition = 1; repetition < 5; ++repetition) {
        for (const auto &[name, stall] : measure(files))
            best[name] = best[name].shortest(stall);
    }
    for (const auto &[name, stall] : best) {
        EXPECT_LT(stall.work, longestStall) << name;
        EXPECT_LT(stall.wall, 5 * longestStall) << name;
        RecordProperty(name, std::to_string(stall.work.count()) + " " + std::to_string(stall.wall.count()));
    }
}
