// What goes wrong ends in a sentence, and costs neither the input nor what stood at the output's place.

#include "Engine/ErrorMessage.h"
#include "Platform/CancellationError.h"
#include "Platform/File.h"
#include "Support/Bounds.h"
#include "Support/Expect.h"
#include "Support/PDFBuilder.h"
#include "Support/Pages.h"
#include "Support/Processes.h"
#include "Support/Scopes.h"
#include "Support/TemporaryFolder.h"
#include "Watermark/WatermarkRenderer.h"

#include <csignal>
#include <gmock/gmock.h>
#include <random>
#include <sys/resource.h>
#include <sys/stat.h>

using namespace nolfa;
using namespace nolfa::testing;
namespace fs = std::filesystem;
using ::testing::ElementsAre;

namespace {

const WatermarkSpec spec{.text = "CONFIDENTIEL"};

class WatermarkFailure : public ::testing::Test {
protected:
    fs::path document(int pages = 3)
    {
        PDFBuilder builder;
        for (int page = 1; page <= pages; ++page)
            builder.textPage({"page " + std::to_string(page)});
        return builder.write(folder / "in.pdf");
    }

    fs::path encrypted(const std::string &password)
    {
        fs::path file = folder / "locked.pdf";
        EXPECT_EQ(
            runProgram("/usr/bin/qpdf", {"--encrypt", password, "owner", "256", "--", document(), file}).status, 0);
        fs::remove(folder / "in.pdf");
        return file;
    }

    /// The sentence of a failure that leaves a file at the output's place as it was, and nothing beside it.
    std::string failure(const fs::path &input)
    {
        const fs::path output = folder.write("out.pdf", "what stood there");
        const std::vector<std::string> before = folder.names();
        std::string sentence = "no failure";
        try {
            WatermarkRenderer::render(input, output, spec);
        } catch (const std::exception &error) {
            sentence = ErrorMessage::sentence(error);
            EXPECT_EQ(contentOf(output), "what stood there");
        }
        EXPECT_EQ(folder.names(), before);
        return sentence;
    }

    LanguageScope language{NolfaLanguage::en};
    TemporaryFolder folder;
};

/// How large a file this process may write.
class FileSizeScope {
public:
    explicit FileSizeScope(rlim_t size)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{size, m_before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    FileSizeScope(const FileSizeScope &) = delete;
    FileSizeScope &operator=(const FileSizeScope &) = delete;
    ~FileSizeScope() { ::setrlimit(RLIMIT_FSIZE, &m_before); }

private:
    rlimit m_before{};
};

const ConversionError noPlace = ConversionError::engineFailure("Nolfa couldn't open that location for writing.");

} // namespace

TEST_F(WatermarkFailure, whatIsNoPDFCanNotBeRead)
{
    for (const std::string &bytes :
        {std::string(), std::string("Hello"), std::string("%PDF-1.7\n"), std::string(5000, '\0')}) {
        const fs::path input = folder.write("in.pdf", bytes);
        EXPECT_EQ(failure(input), ConversionError::unreadableInput(input).errorDescription());
    }
    const fs::path missing = folder / "missing.pdf";
    EXPECT_EQ(failure(missing), ConversionError::unreadableInput(missing).errorDescription());
    EXPECT_EQ(failure(folder.path()), ConversionError::unreadableInput(folder.path()).errorDescription());
}

TEST_F(WatermarkFailure, aDocumentWithoutPagesCanNotBeRead)
{
    const fs::path input = PDFBuilder().write(folder / "in.pdf");
    EXPECT_EQ(failure(input), ConversionError::unreadableInput(input).errorDescription());
    expectError(ConversionError::unreadableInput(input), [&] { (void)WatermarkRenderer::previewPage(0, input, spec); });
}

TEST_F(WatermarkFailure, aDocumentThatNeedsAPasswordIsRefused)
{
    const fs::path input = encrypted("secret");
    EXPECT_EQ(failure(input), ConversionError::passwordProtected(input).errorDescription());
    expectError(
        ConversionError::passwordProtected(input), [&] { (void)WatermarkRenderer::previewPage(0, input, spec); });
}

TEST_F(WatermarkFailure, anEmptyPasswordGoesThroughAndTheCopyIsOpenToAll)
{
    const fs::path input = encrypted("");
    WatermarkRenderer::render(input, folder / "out.pdf", spec);
    EXPECT_EQ(runProgram("/usr/bin/qpdf", {"--is-encrypted", folder / "out.pdf"}).status, 2);
    EXPECT_EQ(textOfPDF(folder / "out.pdf").substr(0, 7), "page 1\n");
}

TEST_F(WatermarkFailure, aPageThatIsNotThereIsSkippedWithoutAWord)
{
    std::string bytes = contentOf(document(3));
    // The second page's reference leads nowhere.
    const std::size_t kids = bytes.find("/Kids [");
    const std::size_t second = bytes.find(" 0 R", bytes.find(" 0 R", kids) + 1);
    bytes.replace(second - 1, 1, "0");
    const fs::path input = folder.write("holes.pdf", bytes);
    WatermarkRenderer::render(input, folder / "out.pdf", spec);
    EXPECT_EQ(openPDF(folder / "out.pdf").pageCount(), 2U);
}

TEST_F(WatermarkFailure, withoutAFirstPageNothingCanBeRead)
{
    std::string bytes = contentOf(document(3));
    const std::size_t first = bytes.find(" 0 R", bytes.find("/Kids ["));
    bytes.replace(first - 1, 1, "0");
    const fs::path input = folder.write("headless.pdf", bytes);
    EXPECT_EQ(failure(input), ConversionError::unreadableInput(input).errorDescription());
}

TEST_F(WatermarkFailure, aPreviewPastTheEndSaysSo)
{
    const fs::path input = document(3);
    EXPECT_NO_THROW((void)WatermarkRenderer::previewPage(2, input, spec));
    for (const std::size_t index : {std::size_t{3}, std::size_t{1000}, static_cast<std::size_t>(-1)}) {
        expectError(ConversionError::engineFailure("That page doesn't exist in this document."),
            [&] { (void)WatermarkRenderer::previewPage(index, input, spec); });
    }
    const LanguageScope french(NolfaLanguage::fr);
    expectError(ConversionError::engineFailure("Cette page n’existe pas dans ce document."),
        [&] { (void)WatermarkRenderer::previewPage(3, input, spec); });
}

TEST_F(WatermarkFailure, anOutputFolderThatIsMissingIsNoPlace)
{
    const fs::path input = document();
    expectError(noPlace, [&] { WatermarkRenderer::render(input, folder / "no/out.pdf", spec); });
    expectError(noPlace, [&] { WatermarkRenderer::render(input, folder.path(), spec); });
    expectError(noPlace, [&] { WatermarkRenderer::render(input, "", spec); });
    expectError(noPlace, [&] { WatermarkRenderer::render(input, "/dev/null", spec); });
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
    const LanguageScope french(NolfaLanguage::fr);
    expectError(ConversionError::engineFailure("Nolfa n’a pas pu ouvrir cet emplacement en écriture."),
        [&] { WatermarkRenderer::render(input, folder / "no/out.pdf", spec); });
    EXPECT_THAT(folder.names(), ElementsAre("in.pdf"));
}

TEST_F(WatermarkFailure, thePlaceIsLookedAtBeforeTheInput)
{
    expectError(noPlace, [&] { WatermarkRenderer::render(folder / "missing.pdf", folder / "no/out.pdf", spec); });
}

TEST_F(WatermarkFailure, theInputIsNeverThePlace)
{
    const fs::path input = document();
    const std::string before = contentOf(input);
    fs::create_symlink(input, folder / "link.pdf");
    fs::create_hard_link(input, folder / "twin.pdf");
    for (const fs::path &output : {input, folder / "link.pdf", folder / "twin.pdf", folder.path() / "." / "in.pdf"})
        expectError(noPlace, [&] { WatermarkRenderer::render(input, output, spec); });
    EXPECT_EQ(contentOf(input), before);
    EXPECT_THAT(folder.names(), ElementsAre("in.pdf", "link.pdf", "twin.pdf"));
}

TEST_F(WatermarkFailure, aFileAtThePlaceIsReplacedWithItsPermissions)
{
    const fs::path output = folder.write("out.pdf", "before");
    ::chmod(output.c_str(), 0600);
    WatermarkRenderer::render(document(), output, spec);
    EXPECT_EQ(openPDF(output).pageCount(), 3U);
    EXPECT_EQ(fs::status(output).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_THAT(folder.names(), ElementsAre("in.pdf", "out.pdf"));
}

TEST_F(WatermarkFailure, aLinkAtThePlaceStandsForItsTarget)
{
    fs::create_directory(folder / "else");
    folder.write("else/real.pdf", "before");
    fs::create_symlink(folder / "else/real.pdf", folder / "link.pdf");
    WatermarkRenderer::render(document(), folder / "link.pdf", spec);
    EXPECT_TRUE(fs::is_symlink(folder / "link.pdf"));
    EXPECT_EQ(openPDF(folder / "else/real.pdf").pageCount(), 3U);
}

TEST_F(WatermarkFailure, aDiscThatIsFullInTheMiddleLosesNothing)
{
    PDFBuilder builder;
    std::mt19937 random(3);
    for (int page = 0; page < 30; ++page) {
        std::string noise = "% ";
        for (int index = 0; index < 50'000; ++index)
            noise += static_cast<char>('!' + random() % 90);
        builder.page(noise);
    }
    const fs::path input = builder.write(folder / "in.pdf");
    const FileSizeScope limit(700'000);
    EXPECT_EQ(failure(input), "Nolfa couldn't use out.pdf: File too large.");
}

TEST_F(WatermarkFailure, aStopEndsAtOnceAndLeavesNothing)
{
    const fs::path input = document(50);
    std::stop_source source;
    source.request_stop();
    EXPECT_THROW(WatermarkRenderer::render(input, folder / "out.pdf", spec, source.get_token()), CancellationError);
    EXPECT_THROW((void)WatermarkRenderer::previewPage(0, input, spec, source.get_token()), CancellationError);
    EXPECT_THAT(folder.names(), ElementsAre("in.pdf"));
}

TEST_F(WatermarkFailure, aDamagedTableOfPlacesIsMended)
{
    std::string bytes = contentOf(document(3));
    const std::size_t table = bytes.rfind("xref\n0");
    std::fill(bytes.begin() + static_cast<std::ptrdiff_t>(table) + 10,
        bytes.begin() + static_cast<std::ptrdiff_t>(table) + 60, '7');
    WatermarkRenderer::render(folder.write("damaged.pdf", bytes), folder / "out.pdf", spec);
    EXPECT_EQ(openPDF(folder / "out.pdf").pageCount(), 3U);
}

TEST_F(WatermarkFailure, aTruncatedFileGivesACopyOfWhatIsThereOrASentence)
{
    const std::string bytes = contentOf(document(20));
    for (std::size_t tenths = 0; tenths <= 10; ++tenths) {
        const fs::path input = folder.write("cut.pdf", bytes.substr(0, bytes.size() * tenths / 10));
        const std::string sentence = failure(input);
        EXPECT_TRUE(sentence == "no failure" || sentence == ConversionError::unreadableInput(input).errorDescription());
    }
}

TEST_F(WatermarkFailure, damageAnywhereNeverCrashes)
{
    const std::string bytes = contentOf(document(8));
    std::mt19937 random(11);
    const Bounds bounds(std::chrono::seconds(60), 700);
    for (int round = 0; round < 150; ++round) {
        std::string damaged = bytes;
        for (int hit = 0; hit < 12; ++hit)
            damaged[random() % damaged.size()] = static_cast<char>(random());
        (void)failure(folder.write("damaged.pdf", damaged));
    }
}

TEST_F(WatermarkFailure, deepAndEndlessObjectsAreCutShort)
{
    PDFBuilder builder;
    const int loop = builder.next();
    builder.add(std::to_string(loop) + " 0 R");
    const int deep = builder.add(std::string(400, '[') + "1" + std::string(400, ']'));
    const int self = builder.next();
    builder.add("<< /Self " + std::to_string(self) + " 0 R /Missing 99999 0 R /Far 2147483647 0 R >>");
    builder.resources(
        "/A " + std::to_string(loop) + " 0 R /B " + std::to_string(deep) + " 0 R /C " + std::to_string(self) + " 0 R");
    builder.textPage({"body"});
    const Bounds bounds(std::chrono::seconds(10), 512);
    EXPECT_EQ(failure(builder.write(folder / "in.pdf")), "no failure");
    EXPECT_EQ(textOfPDF(folder / "out.pdf").substr(0, 5), "body\n");
}

TEST_F(WatermarkFailure, aHugeTreeThatIsNotThereCostsNothing)
{
    std::string bytes = contentOf(document(1));
    bytes.replace(bytes.find("/Count 1 "), 9, "/Count 1410065407 ");
    const Bounds bounds(std::chrono::seconds(5), 512);
    (void)failure(folder.write("many.pdf", bytes));
}

TEST_F(WatermarkFailure, hugeBoxesAndTinyStepsAreBounded)
{
    const Bounds bounds(std::chrono::seconds(10), 512);
    WatermarkSpec tiled{.text = "x", .fontSize = 1, .placement = WatermarkSpec::Placement::tiled, .tileSpacing = -1e30};
    for (const char *box : {"/MediaBox [0 0 3e7 3e7]", "/MediaBox [0 0 30000000 30000000]",
             "/MediaBox [-1e38 -1e38 1e38 1e38]", "/MediaBox [0 0 99999999999999999999999999999999999999999999 1]"}) {
        const fs::path input = PDFBuilder().page("", box).write(folder / "in.pdf");
        WatermarkRenderer::render(input, folder / "out.pdf", tiled);
        EXPECT_LT(fs::file_size(folder / "out.pdf"), 2'000'000U);
    }
}
