#include "DesignSystem/Fonts.h"

#include "DesignSystem/Motion.h"
#include "Platform/Bundle.h"
#include "Support/TemporaryFolder.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <gtest/gtest.h>

using namespace nolfa;
using nolfa::testing::TemporaryFolder;

namespace {

const QString ours = QStringLiteral("Newsreader 24pt");

/// Registration works once per process: each promise is kept in a process of its own, which says by its exit status
/// whether the fonts are known at the end.
template <class Steps> void expectKnown(bool isKnown, const Steps &steps)
{
    EXPECT_EXIT(
        {
            qputenv("QT_QPA_PLATFORM", "offscreen");
            int count = 0;
            QGuiApplication application(count, nullptr);
            if (QFontDatabase::families().contains(ours))
                std::_Exit(2);
            steps();
            std::_Exit(QFontDatabase::families().contains(ours) ? 1 : 0);
        },
        ::testing::ExitedWithCode(isKnown ? 1 : 0), "");
}

void copyFont(const std::filesystem::path &target)
{
    std::filesystem::create_directories(target.parent_path());
    std::filesystem::copy_file(*Bundle::main().resource("Newsreader24pt-Regular", "ttf", "Fonts"), target);
}

} // namespace

TEST(Fonts, ofTheBundlesFolderAreRegistered)
{
    expectKnown(true, [] { Fonts::registerIfNeeded(Bundle::main()); });
}

TEST(Fonts, atTheTopServeWhenTheFolderHasNone)
{
    const TemporaryFolder folder;
    copyFont(folder / "font.ttf");
    expectKnown(true, [&folder] { Fonts::registerIfNeeded(Bundle(folder.path())); });
}

TEST(Fonts, atTheTopAreLeftAloneWhenTheFolderHasSome)
{
    const TemporaryFolder folder;
    copyFont(folder / "font.ttf");
    folder.write("Fonts/other.ttf", "no font");
    expectKnown(false, [&folder] { Fonts::registerIfNeeded(Bundle(folder.path())); });
}

TEST(Fonts, thatCannotBeReadArePassedOver)
{
    const TemporaryFolder folder;
    copyFont(folder / "Fonts/b.ttf");
    folder.write("Fonts/a.ttf", "no font");
    expectKnown(true, [&folder] { Fonts::registerIfNeeded(Bundle(folder.path())); });
}

TEST(Fonts, aSecondCallDoesNothingAlsoIfTheFirstFoundNone)
{
    const TemporaryFolder folder;
    expectKnown(false, [&folder] {
        Fonts::registerIfNeeded(Bundle(folder.path()));
        Fonts::registerIfNeeded(Bundle::main());
    });
}

TEST(Motion, isReducedByWhatTheDesktopsSay)
{
    using Settings = Motion::Settings;
    EXPECT_FALSE(Motion::isReducedBy({}));
    EXPECT_FALSE(Motion::isReducedBy(Settings{{"org.freedesktop.appearance", {{"reduced-motion", 0U}}}}));
    EXPECT_TRUE(Motion::isReducedBy(Settings{{"org.freedesktop.appearance", {{"reduced-motion", 1U}}}}));
    EXPECT_FALSE(Motion::isReducedBy(Settings{{"org.gnome.desktop.interface", {{"enable-animations", true}}}}));
    EXPECT_TRUE(Motion::isReducedBy(Settings{{"org.gnome.desktop.interface", {{"enable-animations", false}}}}));
    EXPECT_FALSE(Motion::isReducedBy(Settings{{"org.kde.kdeglobals.KDE", {{"AnimationDurationFactor", "0.5"}}}}));
    EXPECT_TRUE(Motion::isReducedBy(Settings{{"org.kde.kdeglobals.KDE", {{"AnimationDurationFactor", "0"}}}}));
    EXPECT_FALSE(Motion::isReducedBy(Settings{{"org.kde.kdeglobals.KDE", {{"AnimationDurationFactor", "no"}}}}));
}
