#include "Engine/Fidelity.h"

#include "Localization/NolfaL10n.h"

#include <algorithm>

namespace nolfa {

std::string_view rawValue(FidelityTier tier)
{
    switch (tier) {
    case FidelityTier::excellent:
        return "excellent";
    case FidelityTier::good:
        return "good";
    case FidelityTier::bestEffort:
        return "bestEffort";
    }
    return {};
}

std::string label(FidelityTier tier)
{
    switch (tier) {
    case FidelityTier::excellent:
        return T("EXCELLENT", "EXCELLENT");
    case FidelityTier::good:
        return T("GOOD", "BON");
    case FidelityTier::bestEffort:
        return T("BEST-EFFORT", "AU MIEUX");
    }
    return {};
}

namespace {

ConversionCapability onOurOwn(FidelityTier tier, std::string note)
{
    return {tier, std::move(note)};
}

ConversionCapability throughApp(FidelityTier tier, std::string note)
{
    return {.tier = tier, .note = std::move(note), .isMacOnly = true};
}

ConversionCapability throughNetwork(FidelityTier tier, std::string note)
{
    return {.tier = tier, .note = std::move(note), .requiresNetwork = true};
}

std::optional<ConversionCapability> fromMarkdown(DocumentFormat format)
{
    switch (format) {
    case DocumentFormat::markdown:
    case DocumentFormat::docx:
    case DocumentFormat::pdf:
    case DocumentFormat::pptx:
        return ConversionCapability{FidelityTier::excellent, std::nullopt};
    case DocumentFormat::xlsx:
        return onOurOwn(FidelityTier::good,
            T("Markdown tables become worksheets. Anything that is not a table is left out.",
                "Les tableaux Markdown deviennent des feuilles de calcul. Ce qui n’est pas un tableau n’est pas "
                "repris."));
    case DocumentFormat::pages:
        return throughApp(FidelityTier::good,
            T("Created through the Pages app on your Mac.", "Créé par l’application Pages, sur votre Mac."));
    case DocumentFormat::key:
        return throughApp(FidelityTier::good,
            T("Created through the Keynote app on your Mac.", "Créé par l’application Keynote, sur votre Mac."));
    case DocumentFormat::numbers:
        return throughApp(FidelityTier::good,
            T("Created through the Numbers app on your Mac.", "Créé par l’application Numbers, sur votre Mac."));
    default:
        return std::nullopt;
    }
}

std::optional<ConversionCapability> toMarkdown(DocumentFormat format)
{
    switch (format) {
    case DocumentFormat::markdown:
    case DocumentFormat::docx:
        return ConversionCapability{FidelityTier::excellent, std::nullopt};
    case DocumentFormat::pdf:
        return onOurOwn(FidelityTier::good,
            T("Text is extracted cleanly. Complex layouts, multi-column pages, and tables are approximated. "
              "Scanned pages are read with on-device text recognition.",
                "Le texte est extrait proprement. Les mises en page complexes, les pages en colonnes et les "
                "tableaux ne sont restitués qu’approximativement. Les pages numérisées sont lues par "
                "reconnaissance de texte, sur votre Mac."));
    case DocumentFormat::pptx:
        return onOurOwn(FidelityTier::good,
            T("Slide text, titles, and notes are preserved as Markdown sections. Visual layout is not carried "
              "over.",
                "Le texte des diapositives, les titres et les notes deviennent des sections Markdown. La mise en "
                "page visuelle n’est pas conservée."));
    case DocumentFormat::xlsx:
        return onOurOwn(FidelityTier::good,
            T("Each worksheet becomes a Markdown table. Formulas are exported as their computed values.",
                "Chaque feuille devient un tableau Markdown. Les formules sont exportées avec leur valeur "
                "calculée."));
    case DocumentFormat::pages:
        return throughApp(FidelityTier::good,
            T("Converted through the Pages app on your Mac.", "Converti par l’application Pages, sur votre Mac."));
    case DocumentFormat::key:
        return throughApp(FidelityTier::good,
            T("Converted through the Keynote app on your Mac.", "Converti par l’application Keynote, sur votre Mac."));
    case DocumentFormat::numbers:
        return throughApp(FidelityTier::good,
            T("Converted through the Numbers app on your Mac.", "Converti par l’application Numbers, sur votre Mac."));
    case DocumentFormat::gdoc:
    case DocumentFormat::gsheet:
    case DocumentFormat::gslides:
        return throughNetwork(FidelityTier::good,
            T("Fetched from Google Drive, then converted. Private documents need you to sign in.",
                "Récupéré depuis Google Drive, puis converti. Les documents privés demandent une connexion à "
                "votre compte."));
    case DocumentFormat::image:
        return onOurOwn(FidelityTier::bestEffort,
            T("The picture is read with on-device text recognition. Clean screenshots come out well. Photos of "
              "paper depend on the lighting and the angle.",
                "L’image est lue par reconnaissance de texte, sur votre Mac. Les captures d’écran nettes "
                "ressortent bien. Les photos de documents papier dépendent de la lumière et de l’angle."));
    }
    return std::nullopt;
}

} // namespace

// NOLINTNEXTLINE(readability-function-size): a table
std::vector<DirectConversion> Fidelity::directConversions()
{
    return {
        {{DocumentFormat::docx, DocumentFormat::pdf},
            onOurOwn(FidelityTier::good,
                T("Recomposed as a PDF. Headings, lists, tables, and images carry over. Exact Word layout may "
                  "shift slightly.",
                    "Recomposé en PDF. Les titres, les listes, les tableaux et les images sont conservés. La "
                    "mise en page exacte de Word peut varier légèrement."))},
        {{DocumentFormat::pdf, DocumentFormat::docx},
            onOurOwn(FidelityTier::good,
                T("Text and structure are recovered from the PDF, then written as Word. Complex layouts stay "
                  "approximate, and scanned pages go through text recognition.",
                    "Le texte et la structure sont récupérés du PDF, puis écrits au format Word. Les mises en "
                    "page complexes restent approximatives et les pages numérisées passent par la reconnaissance "
                    "de texte."))},
        {{DocumentFormat::xlsx, DocumentFormat::pdf},
            onOurOwn(FidelityTier::good,
                T("Each worksheet becomes a table in the PDF. Charts, colors, and cell formatting are not "
                  "carried over.",
                    "Chaque feuille devient un tableau dans le PDF. Les graphiques, les couleurs et la mise en "
                    "forme des cellules ne sont pas conservés."))},
        {{DocumentFormat::pdf, DocumentFormat::xlsx},
            onOurOwn(FidelityTier::bestEffort,
                T("Tables found in the PDF become worksheets. Everything that is not a table is left out.",
                    "Les tableaux trouvés dans le PDF deviennent des feuilles de calcul. Tout ce qui n’est pas "
                    "un tableau n’est pas repris."))},
        {{DocumentFormat::pdf, DocumentFormat::pptx},
            onOurOwn(FidelityTier::bestEffort,
                T("Headings and text become outline slides. The PDF’s layout is not reproduced.",
                    "Les titres et le texte deviennent des diapositives en mode plan. La mise en page du PDF "
                    "n’est pas reproduite."))},
        {{DocumentFormat::docx, DocumentFormat::pptx},
            onOurOwn(FidelityTier::good,
                T("Headings become slides and text becomes bullet points. Visual design is up to PowerPoint.",
                    "Les titres deviennent des diapositives et le texte, des puces. L’apparence visuelle revient "
                    "à PowerPoint."))},
        {{DocumentFormat::docx, DocumentFormat::xlsx},
            onOurOwn(FidelityTier::bestEffort,
                T("Tables in the document become worksheets. Everything else is left out.",
                    "Les tableaux du document deviennent des feuilles de calcul. Le reste n’est pas repris."))},
        {{DocumentFormat::xlsx, DocumentFormat::docx},
            onOurOwn(FidelityTier::good,
                T("Each worksheet becomes a table in the document. Charts, colors, and cell formatting are not "
                  "carried over.",
                    "Chaque feuille devient un tableau dans le document. Les graphiques, les couleurs et la mise "
                    "en forme des cellules ne sont pas conservés."))},
        {{DocumentFormat::pptx, DocumentFormat::docx},
            onOurOwn(FidelityTier::good,
                T("Slide titles, text, and notes become a document, like a handout.",
                    "Les titres, le texte et les notes des diapositives deviennent un document, comme un support "
                    "de cours."))},
        {{DocumentFormat::docx, DocumentFormat::pages},
            throughApp(FidelityTier::good,
                T("Opened and saved by Pages on your Mac.", "Ouvert et enregistré par Pages, sur votre Mac."))},
        {{DocumentFormat::xlsx, DocumentFormat::numbers},
            throughApp(FidelityTier::good,
                T("Opened and saved by Numbers on your Mac.", "Ouvert et enregistré par Numbers, sur votre Mac."))},
        {{DocumentFormat::pptx, DocumentFormat::key},
            throughApp(FidelityTier::good,
                T("Opened and saved by Keynote on your Mac.", "Ouvert et enregistré par Keynote, sur votre Mac."))},
        {{DocumentFormat::pages, DocumentFormat::docx},
            throughApp(FidelityTier::good,
                T("Exported by Pages on your Mac. Text, styles, tables, and images carry over. Some Pages-only "
                  "layout may shift.",
                    "Exporté par Pages sur votre Mac. Le texte, les styles, les tableaux et les images sont "
                    "conservés. Certaines mises en page propres à Pages peuvent changer."))},
        {{DocumentFormat::numbers, DocumentFormat::xlsx},
            throughApp(FidelityTier::good,
                T("Exported by Numbers on your Mac. A sheet holding several tables becomes several worksheets, "
                  "and formulas that only Numbers has may not carry over.",
                    "Exporté par Numbers sur votre Mac. Une feuille contenant plusieurs tableaux devient "
                    "plusieurs feuilles de calcul, et les formules propres à Numbers peuvent ne pas être "
                    "conservées."))},
        {{DocumentFormat::key, DocumentFormat::pptx},
            throughApp(FidelityTier::good,
                T("Exported by Keynote on your Mac. Themes, transitions, and builds are approximated by Keynote "
                  "itself.",
                    "Exporté par Keynote sur votre Mac. Les thèmes, les transitions et les effets d’apparition "
                    "sont restitués approximativement par Keynote lui-même."))},
        {{DocumentFormat::pages, DocumentFormat::pdf},
            throughApp(FidelityTier::excellent,
                T("Exported as PDF by Pages itself. What you see in Pages is what you get.",
                    "Exporté en PDF par Pages lui-même. Ce que vous voyez dans Pages est ce que vous obtenez."))},
        {{DocumentFormat::numbers, DocumentFormat::pdf},
            throughApp(FidelityTier::excellent,
                T("Exported as PDF by Numbers itself. What you see in Numbers is what you get.",
                    "Exporté en PDF par Numbers lui-même. Ce que vous voyez dans Numbers est ce que vous obtenez."))},
        {{DocumentFormat::key, DocumentFormat::pdf},
            throughApp(FidelityTier::excellent,
                T("Exported as PDF by Keynote itself, one page per slide. What you see in Keynote is what you "
                  "get.",
                    "Exporté en PDF par Keynote lui-même, une page par diapositive. Ce que vous voyez dans "
                    "Keynote est ce que vous obtenez."))},
        {{DocumentFormat::gdoc, DocumentFormat::docx},
            throughNetwork(FidelityTier::excellent,
                T("Exported as Word by Google Docs itself, then saved to your Mac.",
                    "Exporté au format Word par Google Docs lui-même, puis enregistré sur votre Mac."))},
        {{DocumentFormat::gsheet, DocumentFormat::xlsx},
            throughNetwork(FidelityTier::excellent,
                T("Exported as Excel by Google Sheets itself, then saved to your Mac.",
                    "Exporté au format Excel par Google Sheets lui-même, puis enregistré sur votre Mac."))},
        {{DocumentFormat::gslides, DocumentFormat::pptx},
            throughNetwork(FidelityTier::excellent,
                T("Exported as PowerPoint by Google Slides itself, then saved to your Mac.",
                    "Exporté au format PowerPoint par Google Slides lui-même, puis enregistré sur votre Mac."))},
        {{DocumentFormat::image, DocumentFormat::pdf},
            onOurOwn(FidelityTier::good,
                T("The picture is placed on a PDF page at full quality.",
                    "L’image est placée sur une page PDF sans perte de qualité."))},
        {{DocumentFormat::image, DocumentFormat::docx},
            onOurOwn(FidelityTier::bestEffort,
                T("The recognized text becomes a Word document. The picture itself is not embedded.",
                    "Le texte reconnu devient un document Word. L’image elle-même n’est pas intégrée."))},
        {{DocumentFormat::gdoc, DocumentFormat::pdf},
            throughNetwork(FidelityTier::excellent,
                T("Exported as PDF by Google Docs itself. What you see in Google Docs is what you get.",
                    "Exporté en PDF par Google Docs lui-même. Ce que vous voyez dans Google Docs est ce que vous "
                    "obtenez."))},
        {{DocumentFormat::gsheet, DocumentFormat::pdf},
            throughNetwork(FidelityTier::excellent,
                T("Exported as PDF by Google Sheets itself. What you see in Google Sheets is what you get.",
                    "Exporté en PDF par Google Sheets lui-même. Ce que vous voyez dans Google Sheets est ce que "
                    "vous obtenez."))},
        {{DocumentFormat::gslides, DocumentFormat::pdf},
            throughNetwork(FidelityTier::excellent,
                T("Exported as PDF by Google Slides itself, one page per slide. What you see in Google Slides is "
                  "what you get.",
                    "Exporté en PDF par Google Slides lui-même, une page par diapositive. Ce que vous voyez dans "
                    "Google Slides est ce que vous obtenez."))},
    };
}

std::optional<ConversionCapability> Fidelity::capability(DocumentFormat from, DocumentFormat to)
{
    if (isSourceOnly(to))
        return std::nullopt;
    const std::vector<DirectConversion> direct = directConversions();
    const auto found = std::ranges::find(direct, ConversionPair{from, to}, &DirectConversion::pair);
    if (found != direct.end())
        return found->capability;
    if (isMarkdown(from))
        return fromMarkdown(to);
    if (isMarkdown(to))
        return toMarkdown(from);
    return std::nullopt;
}

bool Fidelity::isSupported(DocumentFormat from, DocumentFormat to)
{
    return capability(from, to).has_value();
}

} // namespace nolfa
