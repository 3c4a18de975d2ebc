#include "Engine/PandocRunner.h"

#include "Support/Expect.h"
#include "Support/Scopes.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <span>

using namespace nolfa;
using namespace nolfa::testing;
namespace fs = std::filesystem;
using ::testing::ElementsAre;

namespace {

/// A shell script that plays pandoc.
fs::path script(const TemporaryFolder &folder, std::string_view name, std::string_view text)
{
    fs::path file = folder.write(name, "#!/bin/sh\n" + std::string(text) + "\n");
    fs::permissions(file, fs::perms::owner_exec, fs::perm_options::add);
    return file;
}

} // namespace

TEST(PandocRunner, theBundlesOwnComesFirst)
{
    const TemporaryFolder folder;
    const std::vector<fs::path> places{script(folder, "system/pandoc", "")};
    const Bundle bundle(folder / "bundle");
    EXPECT_EQ(PandocRunner::resolve(bundle, places), (PandocRunner{folder / "system/pandoc"}));
    script(folder, "bundle/pandoc", "");
    EXPECT_EQ(PandocRunner::resolve(bundle, places), (PandocRunner{folder / "bundle/pandoc"}));
    script(folder, "bundle/bin/pandoc", "");
    EXPECT_EQ(PandocRunner::resolve(bundle, places), (PandocRunner{folder / "bundle/bin/pandoc"}));
}

TEST(PandocRunner, passesOverWhatIsNotExecutable)
{
    const TemporaryFolder folder;
    folder.write("bundle/bin/pandoc", "");
    folder.write("first/pandoc", "");
    fs::create_directories(folder / "second/pandoc");
    const std::vector<fs::path> places{folder / "missing", folder / "first/pandoc", folder / "second/pandoc",
        script(folder, "third/pandoc", ""), script(folder, "fourth/pandoc", "")};
    const Bundle bundle(folder / "bundle");
    EXPECT_EQ(PandocRunner::resolve(bundle, places), (PandocRunner{folder / "third/pandoc"}));
    EXPECT_EQ(PandocRunner::resolve(bundle, std::span(places).first(3)), std::nullopt);
}

TEST(PandocRunner, theSystemsPlacesStandInOrder)
{
    EXPECT_THAT(PandocRunner::systemPlaces(),
        ElementsAre("/opt/homebrew/bin/pandoc", "/usr/local/bin/pandoc", "/usr/bin/pandoc"));
}

TEST(PandocRunner, returnsTheOutputOfASuccess)
{
    const TemporaryFolder folder;
    const PandocRunner pandoc{script(folder, "pandoc", "printf '%s-' \"$@\"; cat; echo noise >&2")};
    EXPECT_EQ(pandoc.run({"a", "b"}, "input", {}), "a-b-input");
}

TEST(PandocRunner, aFailureCarriesItsSentenceAndItsTrimmedText)
{
    const LanguageScope language(NolfaLanguage::en);
    const TemporaryFolder folder;
    const PandocRunner pandoc{script(folder, "pandoc", "printf '\\n Error one \\n\\nline two\\n\\n' >&2; exit 64")};
    expectError(ConversionError::toolFailure("pandoc", "Error one line two", "Error one \n\nline two"),
        [&] { (void)pandoc.run({}, std::nullopt, {}); });
}

TEST(PandocRunner, anErrorTextThatIsNoUTF8CountsAsNone)
{
    const LanguageScope language(NolfaLanguage::en);
    const TemporaryFolder folder;
    const PandocRunner pandoc{script(folder, "pandoc", "printf 'dyld \\377' >&2; exit 1")};
    expectError(ConversionError::toolFailure("pandoc", "The conversion tool stopped without saying why.", ""),
        [&] { (void)pandoc.run({}, std::nullopt, {}); });
}

TEST(PandocRunner, status127IsABrokenTool)
{
    const LanguageScope language(NolfaLanguage::fr);
    const TemporaryFolder folder;
    const PandocRunner pandoc{script(folder, "pandoc", "exit 127")};
    expectError(ConversionError::toolFailure("pandoc", "Un outil intégré n’a pas pu démarrer. Réinstallez Nolfa.", ""),
        [&] { (void)pandoc.run({}, std::nullopt, {}); });
}

TEST(PandocRunner, versionIsWhatThePandocPrints)
{
    const TemporaryFolder folder;
    const PandocRunner pandoc{script(folder, "pandoc", "test \"$1\" = --version && printf 'pandoc 9'")};
    EXPECT_EQ(pandoc.version({}), "pandoc 9");
    const PandocRunner garbled{script(folder, "garbled", "printf '\\377'")};
    EXPECT_EQ(garbled.version({}), "");
}

TEST(PandocRunner, ofTheBundleIsTheOneWeShip)
{
    const std::optional<PandocRunner> pandoc = PandocRunner::resolve(Bundle::main());
    ASSERT_TRUE(pandoc);
    EXPECT_EQ(pandoc->binaryURL, *Bundle::main().resource("pandoc", {}, "bin"));
    EXPECT_TRUE(pandoc->version({}).starts_with("pandoc 3.1.11.1\n")) << pandoc->version({});
}
