#include "Compare/ComparisonReport.h"

#include "Engine/FileName.h"
#include "Engine/NativePDF.h"
#include "Engine/ProducedOutput.h"
#include "Localization/NolfaFormat.h"
#include "Localization/NolfaL10n.h"
#include "Platform/CancellationError.h"
#include "Platform/File.h"
#include "Platform/UUID.h"

#include <cmath>
#include <vector>

namespace nolfa {

std::string_view rawValue(ReportFormat format)
{
    return format == ReportFormat::pdf ? "pdf" : "markdown";
}

std::string_view title(ReportFormat format)
{
    return format == ReportFormat::pdf ? "PDF" : "Markdown";
}

std::string_view fileExtension(ReportFormat format)
{
    return format == ReportFormat::pdf ? "pdf" : "md";
}

namespace ComparisonReport {

namespace {

constexpr std::string_view footer = "Nolfa 0.2.2 · nolfa.pelgo.app";

constexpr std::string_view styleSheet =
    R"(body { font-family: "Hanken Grotesk", -apple-system, sans-serif; font-size: 11pt; line-height: 1.5; color: #1A1714; }
h1, h2, h3 { font-family: "Newsreader 24pt", Georgia, serif; color: #1A1714; font-weight: 600; }
h1 { font-size: 23pt; }
h2 { font-size: 15pt; }
h3 { font-size: 12pt; }
p { margin: 6pt 0; }
.meta { font-family: "IBM Plex Mono", monospace; font-size: 9pt; color: #5B6068; }
.eyebrow { font-family: "IBM Plex Mono", monospace; font-size: 9pt; color: #5B6068; letter-spacing: 1.4px; }
.footer { font-family: "IBM Plex Mono", monospace; font-size: 8.5pt; color: #5B6068; }
th, td { border: 1px solid #E3DACB; padding: 4px 8px; text-align: left; }
th { background-color: #F7EFE0; font-family: "IBM Plex Mono", monospace; font-size: 9pt; color: #5B6068; }
ins { background-color: #E8F0EB; color: #2D6A4F; text-decoration: underline; }
del { background-color: #F6E9EA; color: #9B2335; text-decoration: line-through; }
blockquote { color: #5B6068; margin: 4pt 0 4pt 12pt; }
)";

struct SummaryRow {
    std::string label;
    std::string value;
};

std::string percent(double value)
{
    return std::to_string(std::llround(value * 100)) + "%";
}

std::vector<SummaryRow> summaryRows(const ComparisonSummary &summary)
{
    return {{T("Added", "Ajouts"), std::to_string(summary.blocksAdded)},
        {T("Removed", "Suppressions"), std::to_string(summary.blocksRemoved)},
        {T("Modified", "Modifications"), std::to_string(summary.blocksModified)},
        {T("Unchanged", "Inchangés"), std::to_string(summary.blocksUnchanged)},
        {T("Words added", "Mots ajoutés"), std::to_string(summary.wordsAdded)},
        {T("Words removed", "Mots supprimés"), std::to_string(summary.wordsRemoved)},
        {T("Similarity", "Similarité"), percent(summary.similarity)}};
}

std::string reportTitle()
{
    return T("Comparison report", "Rapport de comparaison");
}

std::string fileLine(const ComparedFile &file)
{
    return file.name() + " · " + displayName(file.format) + " · " + file.sizeText() + " · " + file.modifiedText();
}

std::string originalLine(const DocumentComparison &comparison)
{
    return T("Original: ", "Original\u00A0: ") + fileLine(comparison.left);
}

std::string revisedLine(const DocumentComparison &comparison)
{
    return T("Revised: ", "Révisé\u00A0: ") + fileLine(comparison.right);
}

/// What is printed under a section's title: the heading, if the title isn't the heading itself.
const std::string *subtitle(const ComparisonSection &section)
{
    return section.heading && !section.heading->empty() && *section.heading != section.title() ? &*section.heading
                                                                                               : nullptr;
}

std::string_view mark(RunKind kind)
{
    switch (kind) {
    case RunKind::inserted:
        return "++";
    case RunKind::deleted:
        return "~~";
    case RunKind::same:
        break;
    }
    return "";
}

void appendMarked(std::string &text, RunKind kind, std::string_view content)
{
    text.append(mark(kind)).append(content).append(mark(kind));
}

void appendMarkdown(std::string &text, const Change &change)
{
    if (const auto *insertion = change.as<Change::Inserted>()) {
        appendMarked(text, RunKind::inserted, insertion->block.markdownLine());
    } else if (const auto *deletion = change.as<Change::Deleted>()) {
        appendMarked(text, RunKind::deleted, deletion->block.markdownLine());
    } else if (const auto *modification = change.as<Change::Modified>()) {
        for (const DiffRun &run : modification->runs) {
            if (&run != &modification->runs.front())
                text += ' ';
            appendMarked(text, run.kind, run.text);
        }
    }
}

void appendMarkdown(std::string &text, const ComparisonSection &section)
{
    text += "## " + section.title() + "\n";
    if (const std::string *heading = subtitle(section))
        text += "\n*" + *heading + "*\n";
    text += '\n';
    for (const Change &change : section.changes) {
        appendMarkdown(text, change);
        text += "\n\n";
    }
}

void appendEscaped(std::string &html, std::string_view text)
{
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t special = std::min(text.find_first_of("&<>", start), text.size());
        html += text.substr(start, special - start);
        if (special < text.size())
            html += text[special] == '&' ? "&amp;" : text[special] == '<' ? "&lt;" : "&gt;";
        start = special + 1;
    }
}

std::string escaped(std::string_view text)
{
    std::string html;
    appendEscaped(html, text);
    return html;
}

std::string_view element(RunKind kind)
{
    return kind == RunKind::inserted ? "ins" : "del";
}

void appendElement(std::string &html, std::string_view name, std::string_view text)
{
    html.append("<").append(name).append(">");
    appendEscaped(html, text);
    html.append("</").append(name).append(">");
}

std::string runsHTML(const std::vector<DiffRun> &runs)
{
    std::string html;
    for (const DiffRun &run : runs) {
        if (run.kind == RunKind::same)
            appendEscaped(html, run.text);
        else
            appendElement(html, element(run.kind), run.text);
        html += ' ';
    }
    html.erase(html.find_last_not_of(' ') + 1);
    html.erase(0, html.find_first_not_of(' '));
    return html;
}

void appendHTML(std::string &html, const Change &change)
{
    html += "<p>";
    if (const auto *insertion = change.as<Change::Inserted>())
        appendElement(html, element(RunKind::inserted), insertion->block.markdownLine());
    else if (const auto *deletion = change.as<Change::Deleted>())
        appendElement(html, element(RunKind::deleted), deletion->block.markdownLine());
    else if (const auto *modification = change.as<Change::Modified>())
        html += runsHTML(modification->runs);
    html += "</p>";
}

std::string htmlBody(const DocumentComparison &comparison)
{
    std::string html = "<h1>" + escaped(reportTitle()) + "</h1><p class=\"meta\">" + escaped(originalLine(comparison))
        + "<br>" + escaped(revisedLine(comparison)) + "<br>" + escaped(NolfaFormat::longDate(comparison.generatedAt))
        + "</p><p class=\"eyebrow\">" + escaped(T("SUMMARY", "RÉSUMÉ")) + "</p><table>";
    for (const SummaryRow &row : summaryRows(comparison.summary))
        html += "<tr><th>" + escaped(row.label) + "</th><td>" + escaped(row.value) + "</td></tr>";
    html += "</table>";
    if (comparison.isIdentical())
        html += "<p>" + escaped(identicalMessage()) + "</p>";
    for (const ComparisonSection &section : comparison.sections) {
        html += "<h2>" + escaped(section.title()) + "</h2>";
        if (const std::string *heading = subtitle(section))
            html += "<p class=\"meta\">" + escaped(*heading) + "</p>";
        for (const Change &change : section.changes)
            appendHTML(html, change);
    }
    return html + "<hr><p class=\"footer\">" + escaped(footer) + "</p>";
}

/// By way of a file beside it, so that nothing half-written ever stands there.
void writeText(const std::filesystem::path &file, std::string_view text)
{
    const std::filesystem::path interim = file.parent_path() / (".nolfa-" + newUUID() + ".md");
    UnfinishedOutput unfinished({interim});
    File::write(interim, text);
    std::filesystem::rename(interim, file);
    unfinished.keep();
}

} // namespace

void write(
    const DocumentComparison &comparison, const std::filesystem::path &to, ReportFormat as, const std::stop_token &stop)
{
    throwIfStopped(stop);
    if (as == ReportFormat::markdown)
        writeText(to, markdown(comparison));
    else
        NativePDF::render(html(comparison), to, stop);
}

std::string suggestedName(const DocumentComparison &comparison, ReportFormat format)
{
    return FileName::stem(comparison.left.url) + " " + T("(comparison)", "(comparaison)") + "."
        + std::string(fileExtension(format));
}

std::string identicalMessage()
{
    return T("The two documents match. There is no difference in the text.",
        "Les deux documents sont identiques. Aucune différence dans le texte.");
}

std::string markdown(const DocumentComparison &comparison)
{
    std::string text = "# " + reportTitle() + "\n\n- " + originalLine(comparison) + "\n- " + revisedLine(comparison)
        + "\n- " + NolfaFormat::longDate(comparison.generatedAt) + "\n\n"
        + T("> In this report, `++added text++` is text the revised document adds, and `~~removed text~~` is text it "
            "removes. Everything else is unchanged.",
            "> Dans ce rapport, `++texte ajouté++` correspond au texte ajouté par la version révisée, et `~~texte "
            "supprimé~~` au texte qu’elle retire. Le reste est inchangé.")
        + "\n\n## " + T("Summary", "Résumé") + "\n\n| " + T("Measure", "Mesure") + " | " + T("Value", "Valeur")
        + " |\n|---|---|\n";
    for (const SummaryRow &row : summaryRows(comparison.summary))
        text += "| " + row.label + " | " + row.value + " |\n";
    text += '\n';
    if (comparison.isIdentical())
        text += identicalMessage() + "\n\n";
    for (const ComparisonSection &section : comparison.sections)
        appendMarkdown(text, section);
    text.append("---\n\n").append(footer).append("\n");
    return text;
}

std::string html(const DocumentComparison &comparison)
{
    std::string text = "<!DOCTYPE html><html><head><meta charset=\"utf-8\"><style>";
    return text.append(styleSheet).append("</style></head><body>") + htmlBody(comparison) + "</body></html>";
}

} // namespace ComparisonReport

} // namespace nolfa
