#include "Engine/NolfaEngine.h"

#include "Engine/PandocRunner.h"
#include "Support/Processes.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

using namespace nolfa;
using namespace nolfa::testing;
using enum DocumentFormat;
namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

TEST(NolfaEngine, offersTheRoutesWhoseConvertersStand)
{
    const ConversionService service = NolfaEngine::makeService(Bundle::main());
    EXPECT_THAT(service.supportedTargets(markdown), ElementsAre(docx, pdf, pptx, xlsx));
    EXPECT_THAT(service.supportedTargets(docx), ElementsAre(markdown, pdf, pptx, xlsx));
    EXPECT_THAT(service.supportedTargets(xlsx), ElementsAre(markdown, docx, pdf));
    EXPECT_THAT(service.supportedTargets(pdf), ElementsAre(markdown, docx, pptx, xlsx));
    EXPECT_THAT(service.supportedTargets(pptx), ElementsAre(markdown, docx));
}

TEST(NolfaEngine, picturesGoToMarkdownWordAndPDF)
{
    EXPECT_THAT(NolfaEngine::makeService(Bundle::main()).supportedTargets(image), ElementsAre(markdown, docx, pdf));
}

TEST(NolfaEngine, everyRouteOnOfferHasACapability)
{
    const ConversionService service = NolfaEngine::makeService(Bundle::main());
    for (const DocumentFormat source : DocumentFormats::allCases) {
        for (const DocumentFormat target : service.supportedTargets(source))
            EXPECT_TRUE(service.capability(source, target)) << rawValue(source) << " to " << rawValue(target);
    }
}

TEST(NolfaEngine, pandocIsAvailableHere)
{
    EXPECT_TRUE(NolfaEngine::isPandocAvailable());
}

TEST(NolfaEngine, referenceDocumentsOfTheBundleReachPandoc)
{
    const TemporaryFolder folder;
    fs::create_directories(folder / "bundle/bin");
    fs::copy_file(testProgram("report-call"), folder / "bundle/bin/pandoc");
    folder.write("bundle/reference.docx", "x");
    const ConversionService service = NolfaEngine::makeService(Bundle(folder / "bundle"));
    const fs::path input = folder.write("a.md", "x");
    EXPECT_THAT(contentOf(service.convert(input, docx, std::nullopt, {})),
        HasSubstr("--reference-doc\n" + (folder / "bundle/reference.docx").string() + "\n"));
    EXPECT_THAT(
        contentOf(service.convert(input, pptx, std::nullopt, {})), ::testing::Not(HasSubstr("--reference-doc")));
}
