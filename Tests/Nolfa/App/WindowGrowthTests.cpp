#include "Nolfa/App/WindowGrowth.h"

#include "Nolfa/App/AppModel.h"
#include "Nolfa/Support/OffscreenApplication.h"

#include <QScreen>
#include <QWindow>
#include <gtest/gtest.h>

using namespace nolfa;
using namespace nolfa::testing;
using Tool = AppModel::Tool;

namespace {

constexpr QRect screen(0, 0, 1600, 900);

/// A frame of 2 around the content and 30 above.
QRect frameAround(const QPoint &topLeft, const QSize &content)
{
    return {topLeft, content + QSize(4, 32)};
}

std::optional<QRect> grownFor(Tool tool, const QPoint &topLeft, const QSize &content, std::optional<QRect> available)
{
    return WindowGrowth::grown(frameAround(topLeft, content), content, AppModel::leastContentSize(tool), available);
}

} // namespace

TEST(WindowGrowth, aLargeEnoughWindowStaysAsItIs)
{
    EXPECT_EQ(grownFor(Tool::convert, {10, 10}, {900, 560}, screen), std::nullopt);
    EXPECT_EQ(grownFor(Tool::compare, {10, 10}, {900, 560}, screen), std::nullopt);
}

TEST(WindowGrowth, aSmallWindowGrowsByWhatIsMissingAndItsTopEdgeStays)
{
    EXPECT_EQ(grownFor(Tool::compare, {100, 50}, {720, 420}, screen), frameAround({100, 50}, {900, 560}));
    EXPECT_EQ(grownFor(Tool::compare, {100, 50}, {1000, 420}, screen), frameAround({100, 50}, {1000, 560}))
        << "what is wide enough stays as wide";
}

TEST(WindowGrowth, aWindowAtTheRightEdgeMovesLeft)
{
    const QRect grown = grownFor(Tool::compare, {1600 - 724, 50}, {720, 420}, screen).value();
    EXPECT_EQ(grown, frameAround({1600 - 904, 50}, {900, 560}));
}

TEST(WindowGrowth, aWindowAtTheBottomGrowsUpwardAndNotPastTheEdge)
{
    const QRect grown = grownFor(Tool::compare, {100, 900 - 452}, {720, 420}, screen).value();
    EXPECT_EQ(grown, frameAround({100, 900 - 592}, {900, 560}));
}

TEST(WindowGrowth, panelsAndOtherScreensCount)
{
    const QRect second(1600, 30, 1000, 700);
    const QRect grown = grownFor(Tool::compare, {2000, 300}, {720, 420}, second).value();
    EXPECT_EQ(grown, frameAround({2600 - 904, 730 - 592}, {900, 560}));
}

TEST(WindowGrowth, withoutAScreenNothingHoldsTheWindow)
{
    EXPECT_EQ(grownFor(Tool::compare, {5000, 5000}, {720, 420}, std::nullopt), frameAround({5000, 5000}, {900, 560}));
}

TEST(WindowGrowth, aRealWindowGrowsAndNeverShrinks)
{
    ensureOffscreenApplication();
    QWindow window;
    window.setGeometry(10, 10, 400, 300);
    window.show();
    QGuiApplication::processEvents();
    WindowGrowth::growIfNeeded(&window, {500, 450});
    QGuiApplication::processEvents();
    EXPECT_EQ(window.size(), QSize(500, 450));
    WindowGrowth::growIfNeeded(&window, {100, 100});
    EXPECT_EQ(window.size(), QSize(500, 450));
    const QRect available = window.screen()->availableGeometry();
    window.setFramePosition(available.bottomRight() - QPoint(500, 450));
    WindowGrowth::growIfNeeded(&window, {600, 500});
    QGuiApplication::processEvents();
    EXPECT_TRUE(available.contains(window.frameGeometry()));
    WindowGrowth::growIfNeeded(nullptr, {600, 500});
}
