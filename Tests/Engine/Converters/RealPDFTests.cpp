// PDFs as other programs write them, and the whole road of a scanned one.

#include "Engine/Converters/PDFToMarkdownConverter.h"
#include "Engine/NolfaEngine.h"
#include "Platform/PDFDocument.h"
#include "Support/Documents.h"
#include "Support/Expect.h"
#include "Support/Processes.h"
#include "Support/Scopes.h"
#include "Support/StubRecognizer.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

using namespace nolfa;
using namespace nolfa::testing;
using enum DocumentFormat;
namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

namespace {

constexpr const char *report = R"(# Rapport annuel

Le conseil a décidé : « oui » — voilà l’œuvre. An office of efficient fluff, `code(x)` and **bold**.

## Liste

- un
- deux
    - trois

1. premier
2. second

| Nom | Prix | Note |
|-----|-----:|------|
| Poire | 12 | mûre |
| Pomme longue | 7 | verte |

```
int main() { return 0; }
```

> Une citation.
)";

/// What a reader sees of it, line by line.
constexpr const char *afterTitle = R"(
Le conseil a décidé : « oui » — voilà l’œuvre. An office of efficient fluff,)";
constexpr const char *lists = R"(- un
- deux
- trois
- premier
- second
Nom Prix Note
Poire 12 mûre
Pomme longue 7 verte
int main() { return 0; }
Une citation.)";

class RealPDF : public ::testing::Test {
protected:
    /// Reads by text layer alone: nothing may be recognised.
    std::string markdownOf(const fs::path &input)
    {
        const auto stub = std::make_shared<StubRecognizer>(std::vector<std::string>{"seen"});
        const fs::path output = folder / "out.md";
        fs::remove(output);
        PDFToMarkdownConverter({}, stub).convert(input, output, {pdf, markdown}, {});
        EXPECT_THAT(stub->calls(), IsEmpty());
        return contentOf(output);
    }

    fs::path typesetPDF(const std::string &name, const std::string &text)
    {
        fs::path output = folder / (name + ".pdf");
        const fs::path source = folder.write(name + ".md", text);
        const fs::path bin = Bundle::main().root() / "bin";
        const ProcessResult run = runProgram(bin / "pandoc",
            {"-f", "gfm", source, "-o", output, "--pdf-engine=" + (bin / "typst").string()}, {}, folder.path());
        EXPECT_EQ(run.status, 0) << run.stderr;
        return output;
    }

    static void run(const fs::path &program, const std::vector<std::string> &arguments)
    {
        const ProcessResult result = runProgram(program, arguments);
        EXPECT_EQ(result.status, 0) << program << ": " << result.stderr;
    }

    LanguageScope language{NolfaLanguage::en};
    TemporaryFolder folder;
};

} // namespace

TEST_F(RealPDF, ofATypesetterIsReadLineByLine)
{
    const std::string text = markdownOf(typesetPDF("report", report));
    EXPECT_THAT(text, HasSubstr("# Rapport annuel\n"));
    EXPECT_THAT(text, HasSubstr(afterTitle)) << "ligatures are letters";
    EXPECT_THAT(text, HasSubstr("code(x) and bold.")) << "monospaced words have no blanks";
    EXPECT_THAT(text, HasSubstr(lists)) << "a row is a line";
}

TEST_F(RealPDF, ofAWordProcessorIsReadLineByLine)
{
    const fs::path word = pandocDocument(folder.path(), "report.docx", report);
    const std::string text = markdownOf(officeDocument(folder.path(), word, "pdf"));
    EXPECT_THAT(text, HasSubstr("# Rapport annuel\n"));
    EXPECT_THAT(text, HasSubstr(afterTitle));
    EXPECT_THAT(text, HasSubstr(lists));
}

TEST_F(RealPDF, ofADrawingProgramKeepsItsColumnsApart)
{
    const fs::path drawing = folder.write("columns.svg",
        "<svg xmlns='http://www.w3.org/2000/svg' width='600' height='400' font-family='DejaVu Sans' font-size='14'>"
        "<text x='30' y='60'>The first column begins</text><text x='30' y='80'>and goes on with an "
        "official</text>"
        "<text x='30' y='100'>end of its own.</text><text x='330' y='60'>The second column</text>"
        "<text x='330' y='80'>follows afterwards.</text>"
        "<text x='30' y='200'>Left cell</text><text x='330' y='200'>Right cell</text></svg>");
    run("/usr/bin/rsvg-convert", {"-f", "pdf", "-o", folder / "columns.pdf", drawing});
    const std::string text = markdownOf(folder / "columns.pdf");
    EXPECT_THAT(text, HasSubstr("The first column begins\nand goes on with an official\n"));
    EXPECT_THAT(text, HasSubstr("end of its own.\nThe second column\nfollows afterwards.\nLeft cell Right cell\n"));
}

TEST_F(RealPDF, thatNeedsAPasswordIsRefusedAndOneThatOpensIsRead)
{
    const fs::path plain = typesetPDF("plain", "This page is not secret at all.");
    run("/usr/bin/qpdf", {"--encrypt", "user", "owner", "256", "--", plain, folder / "user.pdf"});
    run("/usr/bin/qpdf", {"--encrypt", "", "owner", "256", "--", plain, folder / "owner.pdf"});
    run("/usr/bin/qpdf", {"--allow-weak-crypto", "--encrypt", "", "owner", "40", "--", plain, folder / "old.pdf"});
    expectError(ConversionError::passwordProtected(folder / "user.pdf"), [&] { markdownOf(folder / "user.pdf"); });
    EXPECT_THAT(markdownOf(folder / "owner.pdf"), HasSubstr("not secret at all"));
    EXPECT_THAT(markdownOf(folder / "old.pdf"), HasSubstr("not secret at all"));
}

TEST_F(RealPDF, ofAllKindsOfObjectsReadsTheSame)
{
    const fs::path plain = typesetPDF("plain", report);
    const std::string expected = markdownOf(plain);
    run("/usr/bin/qpdf", {"--object-streams=generate", plain, folder / "packed.pdf"});
    run("/usr/bin/qpdf", {"--qdf", "--object-streams=disable", plain, folder / "unpacked.pdf"});
    run("/usr/bin/qpdf", {"--linearize", plain, folder / "linear.pdf"});
    for (const char *name : {"packed.pdf", "unpacked.pdf", "linear.pdf"})
        EXPECT_EQ(markdownOf(folder / name), expected) << name;
}

TEST_F(RealPDF, withScannedPagesAmongOthersKeepsItsOrder)
{
    const fs::path first = typesetPDF("first", "The first page has its text in a layer, as most have.");
    const fs::path second = typesetPDF("second", "The second page is a picture that a scanner made of paper.");
    const fs::path third = typesetPDF("third", "The third page has its text in a layer again, like the first.");
    // A scan: the page drawn, put into a PDF as a picture.
    run("/usr/bin/pdftoppm", {"-r", "300", "-png", "-singlefile", second, folder / "scan"});
    const ConversionService service = NolfaEngine::makeService(Bundle::main());
    const fs::path scan = service.convert(folder / "scan.png", pdf, std::nullopt, {});
    run("/usr/bin/qpdf", {"--empty", "--pages", first, scan, third, "--", folder / "mixed.pdf"});

    const std::string text = contentOf(service.convert(folder / "mixed.pdf", markdown, std::nullopt, {}));
    const std::size_t layer = text.find("The first page has its text in a layer");
    const std::size_t seen = text.find("The second page is a picture that a scanner made of paper.");
    const std::size_t last = text.find("The third page has its text in a layer");
    EXPECT_NE(last, std::string::npos) << text;
    EXPECT_LT(layer, seen) << text;
    EXPECT_LT(seen, last) << text;
}
