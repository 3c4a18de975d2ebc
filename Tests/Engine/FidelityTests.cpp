#include "Engine/Fidelity.h"

#include "Support/Scopes.h"

#include <gtest/gtest.h>

using namespace nolfa;
using namespace nolfa::testing;
using enum DocumentFormat;

namespace {

struct Row {
    DocumentFormat source;
    DocumentFormat target;
    FidelityTier tier;
    bool isMacOnly;
    bool requiresNetwork;
    const char *noteInEnglish; ///< null: no note
    const char *noteInFrench;
};

/// Every pair of the product. The first rows, 26 of them, are the list of direct conversions in its order.
constexpr std::size_t directCount = 26;
// clang-format off
const std::vector<Row> product {
    {docx, pdf, FidelityTier::good, false, false, "Recomposed as a PDF. Headings, lists, tables, and images carry over. Exact Word layout may shift slightly.",
        "Recomposé en PDF. Les titres, les listes, les tableaux et les images sont conservés. La mise en page exacte de Word peut varier légèrement."},
    {pdf, docx, FidelityTier::good, false, false, "Text and structure are recovered from the PDF, then written as Word. Complex layouts stay approximate, and scanned pages go through text recognition.",
        "Le texte et la structure sont récupérés du PDF, puis écrits au format Word. Les mises en page complexes restent approximatives et les pages numérisées passent par la reconnaissance de texte."},
    {xlsx, pdf, FidelityTier::good, false, false, "Each worksheet becomes a table in the PDF. Charts, colors, and cell formatting are not carried over.",
        "Chaque feuille devient un tableau dans le PDF. Les graphiques, les couleurs et la mise en forme des cellules ne sont pas conservés."},
    {pdf, xlsx, FidelityTier::bestEffort, false, false, "Tables found in the PDF become worksheets. Everything that is not a table is left out.",
        "Les tableaux trouvés dans le PDF deviennent des feuilles de calcul. Tout ce qui n’est pas un tableau n’est pas repris."},
    {pdf, pptx, FidelityTier::bestEffort, false, false, "Headings and text become outline slides. The PDF’s layout is not reproduced.",
        "Les titres et le texte deviennent des diapositives en mode plan. La mise en page du PDF n’est pas reproduite."},
    {docx, pptx, FidelityTier::good, false, false, "Headings become slides and text becomes bullet points. Visual design is up to PowerPoint.",
        "Les titres deviennent des diapositives et le texte, des puces. L’apparence visuelle revient à PowerPoint."},
    {docx, xlsx, FidelityTier::bestEffort, false, false, "Tables in the document become worksheets. Everything else is left out.",
        "Les tableaux du document deviennent des feuilles de calcul. Le reste n’est pas repris."},
    {xlsx, docx, FidelityTier::good, false, false, "Each worksheet becomes a table in the document. Charts, colors, and cell formatting are not carried over.",
        "Chaque feuille devient un tableau dans le document. Les graphiques, les couleurs et la mise en forme des cellules ne sont pas conservés."},
    {pptx, docx, FidelityTier::good, false, false, "Slide titles, text, and notes become a document, like a handout.",
        "Les titres, le texte et les notes des diapositives deviennent un document, comme un support de cours."},
    {docx, pages, FidelityTier::good, true, false, "Opened and saved by Pages on your Mac.",
        "Ouvert et enregistré par Pages, sur votre Mac."},
    {xlsx, numbers, FidelityTier::good, true, false, "Opened and saved by Numbers on your Mac.",
        "Ouvert et enregistré par Numbers, sur votre Mac."},
    {pptx, key, FidelityTier::good, true, false, "Opened and saved by Keynote on your Mac.",
        "Ouvert et enregistré par Keynote, sur votre Mac."},
    {pages, docx, FidelityTier::good, true, false, "Exported by Pages on your Mac. Text, styles, tables, and images carry over. Some Pages-only layout may shift.",
        "Exporté par Pages sur votre Mac. Le texte, les styles, les tableaux et les images sont conservés. Certaines mises en page propres à Pages peuvent changer."},
    {numbers, xlsx, FidelityTier::good, true, false, "Exported by Numbers on your Mac. A sheet holding several tables becomes several worksheets, and formulas that only Numbers has may not carry over.",
        "Exporté par Numbers sur votre Mac. Une feuille contenant plusieurs tableaux devient plusieurs feuilles de calcul, et les formules propres à Numbers peuvent ne pas être conservées."},
    {key, pptx, FidelityTier::good, true, false, "Exported by Keynote on your Mac. Themes, transitions, and builds are approximated by Keynote itself.",
        "Exporté par Keynote sur votre Mac. Les thèmes, les transitions et les effets d’apparition sont restitués approximativement par Keynote lui-même."},
    {pages, pdf, FidelityTier::excellent, true, false, "Exported as PDF by Pages itself. What you see in Pages is what you get.",
        "Exporté en PDF par Pages lui-même. Ce que vous voyez dans Pages est ce que vous obtenez."},
    {numbers, pdf, FidelityTier::excellent, true, false, "Exported as PDF by Numbers itself. What you see in Numbers is what you get.",
        "Exporté en PDF par Numbers lui-même. Ce que vous voyez dans Numbers est ce que vous obtenez."},
    {key, pdf, FidelityTier::excellent, true, false, "Exported as PDF by Keynote itself, one page per slide. What you see in Keynote is what you get.",
        "Exporté en PDF par Keynote lui-même, une page par diapositive. Ce que vous voyez dans Keynote est ce que vous obtenez."},
    {gdoc, docx, FidelityTier::excellent, false, true, "Exported as Word by Google Docs itself, then saved to your Mac.",
        "Exporté au format Word par Google Docs lui-même, puis enregistré sur votre Mac."},
    {gsheet, xlsx, FidelityTier::excellent, false, true, "Exported as Excel by Google Sheets itself, then saved to your Mac.",
        "Exporté au format Excel par Google Sheets lui-même, puis enregistré sur votre Mac."},
    {gslides, pptx, FidelityTier::excellent, false, true, "Exported as PowerPoint by Google Slides itself, then saved to your Mac.",
        "Exporté au format PowerPoint par Google Slides lui-même, puis enregistré sur votre Mac."},
    {image, pdf, FidelityTier::good, false, false, "The picture is placed on a PDF page at full quality.",
        "L’image est placée sur une page PDF sans perte de qualité."},
    {image, docx, FidelityTier::bestEffort, false, false, "The recognized text becomes a Word document. The picture itself is not embedded.",
        "Le texte reconnu devient un document Word. L’image elle-même n’est pas intégrée."},
    {gdoc, pdf, FidelityTier::excellent, false, true, "Exported as PDF by Google Docs itself. What you see in Google Docs is what you get.",
        "Exporté en PDF par Google Docs lui-même. Ce que vous voyez dans Google Docs est ce que vous obtenez."},
    {gsheet, pdf, FidelityTier::excellent, false, true, "Exported as PDF by Google Sheets itself. What you see in Google Sheets is what you get.",
        "Exporté en PDF par Google Sheets lui-même. Ce que vous voyez dans Google Sheets est ce que vous obtenez."},
    {gslides, pdf, FidelityTier::excellent, false, true, "Exported as PDF by Google Slides itself, one page per slide. What you see in Google Slides is what you get.",
        "Exporté en PDF par Google Slides lui-même, une page par diapositive. Ce que vous voyez dans Google Slides est ce que vous obtenez."},
    {markdown, markdown, FidelityTier::excellent, false, false, nullptr,
        nullptr},
    {markdown, docx, FidelityTier::excellent, false, false, nullptr,
        nullptr},
    {markdown, pdf, FidelityTier::excellent, false, false, nullptr,
        nullptr},
    {markdown, pptx, FidelityTier::excellent, false, false, nullptr,
        nullptr},
    {markdown, xlsx, FidelityTier::good, false, false, "Markdown tables become worksheets. Anything that is not a table is left out.",
        "Les tableaux Markdown deviennent des feuilles de calcul. Ce qui n’est pas un tableau n’est pas repris."},
    {markdown, pages, FidelityTier::good, true, false, "Created through the Pages app on your Mac.",
        "Créé par l’application Pages, sur votre Mac."},
    {markdown, key, FidelityTier::good, true, false, "Created through the Keynote app on your Mac.",
        "Créé par l’application Keynote, sur votre Mac."},
    {markdown, numbers, FidelityTier::good, true, false, "Created through the Numbers app on your Mac.",
        "Créé par l’application Numbers, sur votre Mac."},
    {docx, markdown, FidelityTier::excellent, false, false, nullptr,
        nullptr},
    {pdf, markdown, FidelityTier::good, false, false, "Text is extracted cleanly. Complex layouts, multi-column pages, and tables are approximated. Scanned pages are read with on-device text recognition.",
        "Le texte est extrait proprement. Les mises en page complexes, les pages en colonnes et les tableaux ne sont restitués qu’approximativement. Les pages numérisées sont lues par reconnaissance de texte, sur votre Mac."},
    {pptx, markdown, FidelityTier::good, false, false, "Slide text, titles, and notes are preserved as Markdown sections. Visual layout is not carried over.",
        "Le texte des diapositives, les titres et les notes deviennent des sections Markdown. La mise en page visuelle n’est pas conservée."},
    {xlsx, markdown, FidelityTier::good, false, false, "Each worksheet becomes a Markdown table. Formulas are exported as their computed values.",
        "Chaque feuille devient un tableau Markdown. Les formules sont exportées avec leur valeur calculée."},
    {pages, markdown, FidelityTier::good, true, false, "Converted through the Pages app on your Mac.",
        "Converti par l’application Pages, sur votre Mac."},
    {key, markdown, FidelityTier::good, true, false, "Converted through the Keynote app on your Mac.",
        "Converti par l’application Keynote, sur votre Mac."},
    {numbers, markdown, FidelityTier::good, true, false, "Converted through the Numbers app on your Mac.",
        "Converti par l’application Numbers, sur votre Mac."},
    {gdoc, markdown, FidelityTier::good, false, true, "Fetched from Google Drive, then converted. Private documents need you to sign in.",
        "Récupéré depuis Google Drive, puis converti. Les documents privés demandent une connexion à votre compte."},
    {gsheet, markdown, FidelityTier::good, false, true, "Fetched from Google Drive, then converted. Private documents need you to sign in.",
        "Récupéré depuis Google Drive, puis converti. Les documents privés demandent une connexion à votre compte."},
    {gslides, markdown, FidelityTier::good, false, true, "Fetched from Google Drive, then converted. Private documents need you to sign in.",
        "Récupéré depuis Google Drive, puis converti. Les documents privés demandent une connexion à votre compte."},
    {image, markdown, FidelityTier::bestEffort, false, false, "The picture is read with on-device text recognition. Clean screenshots come out well. Photos of paper depend on the lighting and the angle.",
        "L’image est lue par reconnaissance de texte, sur votre Mac. Les captures d’écran nettes ressortent bien. Les photos de documents papier dépendent de la lumière et de l’angle."},
};
// clang-format on

std::optional<std::string> optionalText(const char *text)
{
    return text == nullptr ? std::nullopt : std::optional<std::string>(text);
}

ConversionCapability capabilityOf(const Row &row, NolfaLanguage language)
{
    const char *note = language == NolfaLanguage::fr ? row.noteInFrench : row.noteInEnglish;
    return {row.tier, optionalText(note), row.isMacOnly, row.requiresNetwork};
}

} // namespace

TEST(Fidelity, knowsEveryPairOfTheProductInBothLanguages)
{
    for (const NolfaLanguage language : {NolfaLanguage::en, NolfaLanguage::fr}) {
        const LanguageScope scope(language);
        for (const Row &row : product) {
            EXPECT_EQ(Fidelity::capability(row.source, row.target), capabilityOf(row, language))
                << rawValue(row.source) << " to " << rawValue(row.target);
        }
    }
}

TEST(Fidelity, knowsNoOtherPair)
{
    std::size_t count = 0;
    for (const DocumentFormat source : DocumentFormats::allCases) {
        for (const DocumentFormat target : DocumentFormats::allCases)
            count += Fidelity::isSupported(source, target) ? 1U : 0U;
    }
    EXPECT_EQ(count, product.size());
    EXPECT_EQ(count, 45U) << "44 conversions, and Markdown to itself";
}

TEST(Fidelity, directConversionsStandInOrderAndFollowTheLanguage)
{
    for (const NolfaLanguage language : {NolfaLanguage::en, NolfaLanguage::fr}) {
        const LanguageScope scope(language);
        const std::vector<DirectConversion> direct = Fidelity::directConversions();
        ASSERT_EQ(direct.size(), directCount);
        for (std::size_t index = 0; index < directCount; ++index) {
            EXPECT_EQ(direct[index].pair, (ConversionPair{product[index].source, product[index].target}));
            EXPECT_EQ(direct[index].capability, capabilityOf(product[index], language));
        }
    }
}

TEST(Fidelity, markdownToItselfIsExcellentThoughNobodyConvertsIt)
{
    EXPECT_EQ(Fidelity::capability(markdown, markdown), (ConversionCapability{FidelityTier::excellent, std::nullopt}));
}

TEST(Fidelity, nothingLeadsToASourceOnlyFormat)
{
    for (const DocumentFormat source : DocumentFormats::allCases) {
        for (const DocumentFormat target : {gdoc, gsheet, gslides, image})
            EXPECT_EQ(Fidelity::capability(source, target), std::nullopt);
    }
}

TEST(Fidelity, pairsOutsideTheTablesAreUnsupported)
{
    EXPECT_FALSE(Fidelity::isSupported(pages, numbers));
    EXPECT_FALSE(Fidelity::isSupported(pptx, xlsx));
    EXPECT_FALSE(Fidelity::isSupported(image, xlsx));
    EXPECT_FALSE(Fidelity::isSupported(pages, pptx));
}

TEST(Fidelity, googleDocumentsNeedTheNetwork)
{
    EXPECT_TRUE(Fidelity::capability(gdoc, markdown)->requiresNetwork);
    EXPECT_EQ(Fidelity::capability(gdoc, markdown)->tier, FidelityTier::good);
    EXPECT_EQ(Fidelity::capability(gdoc, docx)->tier, FidelityTier::excellent);
}

TEST(FidelityTier, hasRawValuesAndLabels)
{
    const auto labels = [](NolfaLanguage language) {
        const LanguageScope scope(language);
        std::vector<std::string> texts;
        for (const FidelityTier tier : FidelityTiers::allCases) {
            texts.emplace_back(rawValue(tier));
            texts.push_back(label(tier));
        }
        return texts;
    };
    EXPECT_EQ(labels(NolfaLanguage::en),
        (std::vector<std::string>{"excellent", "EXCELLENT", "good", "GOOD", "bestEffort", "BEST-EFFORT"}));
    EXPECT_EQ(labels(NolfaLanguage::fr),
        (std::vector<std::string>{"excellent", "EXCELLENT", "good", "BON", "bestEffort", "AU MIEUX"}));
}
