// The whole road from a scanned page to Markdown, with the real recogniser.

#include "Engine/NolfaEngine.h"
#include "Engine/VisionTextRecognizer.h"
#include "Platform/CancellationError.h"
#include "Platform/PDFDocument.h"
#include "Support/Pictures.h"
#include "Support/Processes.h"
#include "Support/TemporaryFolder.h"

#include <chrono>
#include <gtest/gtest.h>
#include <map>
#include <sstream>
#include <thread>

using namespace nolfa;
using namespace nolfa::testing;
using namespace std::chrono_literals;
using enum DocumentFormat;
using Clock = std::chrono::steady_clock;
namespace fs = std::filesystem;

namespace {

constexpr const char *english = R"(The harvest of that year began in the last week of August, earlier than anyone on
the hill could remember. The mornings were cool and the apples had taken colour quickly, so the pickers came up from
the village before the light and worked until the carts were full. By the second Sunday, 832 crates stood in the barn,
a fifth more than the year before, and nobody knew where the rest should go.

Old Margaret kept the book. She wrote down the date, the row, the number of crates and the name of whoever had carried
them, and in the evening she read the page aloud while the others ate. "Row seven," she would say, "forty crates, two
of them bruised." When the numbers did not agree she sent a child with a lantern to count again, and the child always
came back with the answer that she had expected.

In October the rain came. It fell for eleven days without a pause, and the brook behind the press rose over its stones
and took the lower fence away. We carried the sacks to the loft, mended the roof with boards from the stable, and
waited. On the twelfth day the sky cleared, the road dried, and the first wagon left for the market at half past five
in the morning with thirty crates of russets and one very tired horse.)";

constexpr const char *french = R"(La récolte de cette année-là commença dans la dernière semaine d’août, plus tôt que
personne ne pouvait s’en souvenir. Les matinées étaient fraîches et les pommes avaient vite pris leur couleur, si bien
que les cueilleurs montaient du village avant le jour et travaillaient jusqu’à ce que les charrettes fussent pleines.
Le deuxième dimanche, 832 caisses attendaient dans la grange, un cinquième de plus que l’année précédente, et nul ne
savait où mettre le reste.

La vieille Marguerite tenait le registre. Elle notait la date, le rang, le nombre de caisses et le nom de celui qui les
avait portées, puis, le soir, elle lisait la page à voix haute pendant que les autres mangeaient. Quand les comptes ne
tombaient pas juste, elle envoyait un garçon avec une lanterne pour tout recompter, et le garçon revenait toujours avec
la réponse qu’elle attendait déjà.

En octobre vint la pluie. Elle tomba onze jours sans relâche, et le ruisseau derrière le pressoir passa par-dessus ses
pierres et emporta la clôture du bas. Nous avons monté les sacs au grenier, réparé le toit avec les planches de
l’étable, et patienté. Le douzième jour, le ciel s’éclaircit, la route sécha, et le premier chariot partit pour le
marché à cinq heures et demie du matin, avec trente caisses de reinettes et un cheval très fatigué.)";

/// A page of A4 with the text, as a scanner at 300 dots per inch sees it.
Bitmap scanned(const TemporaryFolder &folder, const std::string &text)
{
    const fs::path source
        = folder.write("page.typ", "#set page(paper: \"a4\")\n#set text(size: 11pt, hyphenate: false)\n" + text + "\n");
    const ProcessResult run
        = runProgram(Bundle::main().root() / "bin/typst", {"compile", source.string(), (folder / "page.pdf").string()});
    EXPECT_EQ(run.status, 0) << run.stderr;
    constexpr double dotsPerPoint = 300.0 / 72.0;
    return PDFDocument::open(folder / "page.pdf")->render(0, dotsPerPoint, {}).value();
}

std::string png(const Bitmap &bitmap)
{
    EXPECT_EQ(bitmap.layout, Bitmap::Layout::grey);
    PNGPicture picture{.width = bitmap.width, .height = bitmap.height, .colourType = 0};
    picture.sample = [&bitmap](int column, int row, int) {
        return bitmap.pixels[static_cast<std::size_t>(row) * bitmap.bytesPerRow() + static_cast<std::size_t>(column)];
    };
    return picture.file();
}

std::map<std::string, int> words(const std::string &text)
{
    std::map<std::string, int> result;
    std::istringstream stream(text);
    for (std::string word; stream >> word;)
        ++result[word];
    return result;
}

/// The part of the expected words that was read, each as often as it stands in the text.
double partRead(const std::string &expected, const std::string &read)
{
    const std::map<std::string, int> found = words(read);
    int count = 0;
    int right = 0;
    for (const auto &[word, times] : words(expected)) {
        count += times;
        const auto match = found.find(word);
        right += match == found.end() ? 0 : std::min(times, match->second);
    }
    return static_cast<double>(right) / count;
}

/// Straight quotes where a typesetter or a recogniser chose others.
std::string withPlainQuotes(std::string text)
{
    for (const auto &[from, to] :
        {std::pair<std::string, std::string>{"“", "\""}, {"”", "\""}, {"’", "'"}, {"‘", "'"}}) {
        for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at))
            text.replace(at, from.size(), to);
    }
    return text;
}

} // namespace

TEST(TextRecognition, aScannedPageComesBackAlmostWordForWordInBothLanguages)
{
    const TemporaryFolder folder;
    const ConversionService service = NolfaEngine::makeService(Bundle::main());
    for (const char *text : {english, french}) {
        const fs::path input = folder.write("scan.png", png(scanned(folder, text)));
        const std::string read = contentOf(service.convert(input, markdown, std::nullopt, {}));
        EXPECT_GE(partRead(withPlainQuotes(text), withPlainQuotes(read)), 0.99) << read;
    }
}

TEST(TextRecognition, aPictureGoesToWordThroughMarkdown)
{
    const TemporaryFolder folder;
    const ConversionService service = NolfaEngine::makeService(Bundle::main());
    const fs::path input = folder.write("scan.png", png(scanned(folder, english)));
    const fs::path word = service.convert(input, docx, std::nullopt, {});
    fs::create_directory(folder / "back");
    const std::string back = contentOf(service.convert(word, markdown, folder / "back", {}));
    EXPECT_NE(back.find("Margaret"), std::string::npos) << back;
}

TEST(TextRecognition, fragmentsStandWhereTheLinesAre)
{
    const TemporaryFolder folder;
    const Bitmap page = scanned(folder, "First line of the page\n#v(10cm)\nAnother one further down");
    const std::vector<RecognizedFragment> fragments = VisionTextRecognizer().recognize(page, {"en-US"}, {});
    ASSERT_EQ(fragments.size(), 2U);
    EXPECT_EQ(fragments[0].text, "First line of the page");
    EXPECT_EQ(fragments[1].text, "Another one further down");
    // The margins of the page are 2.5 cm, its height 29.7.
    EXPECT_NEAR(fragments[0].boundingBox.x, 2.5 / 21, 0.01);
    EXPECT_NEAR(fragments[0].boundingBox.centreY(), 1 - 2.7 / 29.7, 0.01);
    EXPECT_NEAR(fragments[0].boundingBox.centreY() - fragments[1].boundingBox.centreY(), 10.5 / 29.7, 0.04);
    EXPECT_GT(fragments[0].boundingBox.width, 0.1);
    EXPECT_LT(fragments[0].boundingBox.height, 0.02);
}

TEST(TextRecognition, aStopEndsTheReadingWithinAMoment)
{
    const TemporaryFolder folder;
    const Bitmap page = scanned(folder, english);
    const VisionTextRecognizer recognizer;
    // The first page starts the engine.
    (void)recognizer.recognize(page, {"en-US"}, {});
    auto best = Clock::duration::max();
#ifdef __SANITIZE_ADDRESS__
    const auto promised = 1000ms;
#else
    const auto promised = 200ms;
#endif
    for (const auto wait : {250ms, 350ms, 450ms, 300ms, 400ms, 500ms}) {
        if (best < promised)
            break;
        std::stop_source source;
        Clock::time_point asked;
        std::jthread stopper([&] {
            std::this_thread::sleep_for(wait);
            asked = Clock::now();
            source.request_stop();
        });
        EXPECT_THROW((void)recognizer.recognize(page, {"en-US"}, source.get_token()), CancellationError);
        const Clock::time_point ended = Clock::now();
        stopper.join();
        best = std::min(best, ended - asked);
    }
    EXPECT_LT(best, promised);
}

TEST(TextRecognition, severalPagesAreReadAtOnceAndAnEngineServesAgainAfterAStop)
{
    const TemporaryFolder folder;
    const Bitmap page = scanned(folder, "One short line");
    const VisionTextRecognizer recognizer;
    const std::vector<RecognizedFragment> expected = recognizer.recognize(page, {"en-US"}, {});
    std::array<std::vector<RecognizedFragment>, 4> read;
    {
        std::vector<std::jthread> threads;
        for (std::vector<RecognizedFragment> &one : read)
            threads.emplace_back([&] { one = recognizer.recognize(page, {"en-US"}, {}); });
    }
    for (const std::vector<RecognizedFragment> &one : read)
        EXPECT_EQ(one, expected);
}
