#include "FormatsCommand.h"

#include "Platform/JSON.h"
#include "Support/Scopes.h"
#include "Support/StubConverter.h"

#include <gtest/gtest.h>
#include <sstream>

using namespace nolfa;
using namespace nolfa::CommandLine;
using namespace nolfa::testing;
using enum DocumentFormat;

namespace {

std::string formats(bool asJSON)
{
    const ConversionService service({std::make_shared<StubConverter>(
        std::vector<ConversionPair>{{gdoc, pdf}, {docx, pptx}, {docx, markdown}}, StubConverter::Work())});
    std::ostringstream out;
    EXPECT_EQ(runFormats(service, {.asJSON = asJSON}, out), ExitStatus::success);
    return out.str();
}

} // namespace

TEST(FormatsCommand, listsRoutesInTheOrderOfFormats)
{
    const LanguageScope language(NolfaLanguage::en);
    EXPECT_EQ(formats(false),
        "docx      → markdown  EXCELLENT\n"
        "docx      → pptx      GOOD         Headings become slides and text becomes bullet points. Visual design is "
        "up to PowerPoint.\n"
        "gdoc      → pdf       EXCELLENT    Exported as PDF by Google Docs itself. What you see in Google Docs is "
        "what you get.\n");
}

TEST(FormatsCommand, writesTheSameAsJSON)
{
    const LanguageScope language(NolfaLanguage::fr);
    const std::optional<JSON> json = JSON::parse(formats(true));
    ASSERT_TRUE(json);
    const auto route = [](const char *source, const char *target, const char *tier, JSON note, bool network) {
        return JSON(JSON::Object{{"source", source}, {"target", target}, {"tier", tier}, {"note", std::move(note)},
            {"isMacOnly", false}, {"requiresNetwork", network}});
    };
    EXPECT_EQ(*json,
        JSON(JSON::Object{{"version", 1},
            {"routes",
                JSON::Array{route("docx", "markdown", "excellent", JSON(), false),
                    route("docx", "pptx", "good",
                        "Les titres deviennent des diapositives et le texte, des puces. L’apparence visuelle revient à "
                        "PowerPoint.",
                        false),
                    route("gdoc", "pdf", "excellent",
                        "Exporté en PDF par Google Docs lui-même. Ce que vous voyez dans Google Docs est ce que vous "
                        "obtenez.",
                        true)}}}));
}
