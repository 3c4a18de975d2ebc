#pragma once

#include "Engine/ConversionError.h"
#include "Nolfa/Features/Convert/ConvertViewModel.h"

#include <QCoreApplication>
#include <algorithm>
#include <chrono>
#include <ctime>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <string>

namespace nolfa::testing {

using Milliseconds = std::chrono::duration<double, std::milli>;

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

inline Milliseconds threadTime()
{
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

inline Stall timed(const std::function<void()> &work)
{
    const auto start = std::chrono::steady_clock::now();
    const Milliseconds before = threadTime();
    work();
    return {std::chrono::steady_clock::now() - start, threadTime() - before};
}

/// By what the thread was held up.
using Stalls = std::map<std::string, Stall>;

inline QList<QUrl> manyFiles(int count)
{
    QList<QUrl> files;
    for (int index = 0; index < count; ++index)
        files.append(QUrl(QStringLiteral("file:///home/reader/Documents/a folder/%1.md").arg(index)));
    return files;
}

/// All that a user does with many files, by what it took.
inline Stalls measureUse(ConvertViewModel &model, const QList<QUrl> &files)
{
    const int count = static_cast<int>(files.size());
    const auto turn = [] { QCoreApplication::processEvents(); };
    const auto turnsWhile = [&turn](const std::function<bool()> &condition) {
        Stall longest;
        do
            longest = longest.longest(timed(turn));
        while (condition());
        return longest;
    };
    // Long enough for a screen to lay out, to draw, and to end its transitions.
    const auto settle = [&turnsWhile] {
        const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(300);
        return turnsWhile([end] { return std::chrono::steady_clock::now() < end; });
    };
    Stalls stalls;
    stalls["add"] = timed([&] { model.add(files); });
    stalls["turns after adding"] = settle();
    stalls["add again"] = timed([&] { model.add(files); });
    stalls["convert all"] = timed([&] { model.convertAll(); });
    stalls["turns while converting"] = turnsWhile([&model] { return model.isConverting(); });
    EXPECT_EQ(model.progress(), (ConvertViewModel::Progress{count, count}));
    stalls["change the language"] = timed([&] { model.itemModel()->retranslate(); });
    stalls["turns after that"] = settle();
    stalls["clear"] = timed([&] { model.clear(); });
    stalls["turns after clearing"] = settle();
    model.add(files);
    model.convertAll();
    stalls["clear while they run"] = timed([&] { model.clear(); });
    return stalls;
}

/// The best of several measurements, each of a fresh state, lies below the limit.
inline void expectFluent(Milliseconds longest, const std::function<Stalls()> &measure)
{
    Stalls best = measure();
    for (int repetition = 1; repetition < 5; ++repetition) {
        for (const auto &[name, stall] : measure())
            best[name] = best[name].shortest(stall);
    }
    for (const auto &[name, stall] : best) {
        EXPECT_LT(stall.work, longest) << name;
        // Other programs may want the processors too.
        EXPECT_LT(stall.wall, 5 * longest) << name;
        ::testing::Test::RecordProperty(
            name, std::to_string(stall.work.count()) + " " + std::to_string(stall.wall.count()));
    }
}

} // namespace nolfa::testing
