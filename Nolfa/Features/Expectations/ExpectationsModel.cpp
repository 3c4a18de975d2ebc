#include "Nolfa/Features/Expectations/ExpectationsModel.h"

#include "Localization/NolfaL10n.h"

#include <QVariantMap>
#include <algorithm>
#include <iterator>

namespace nolfa {

namespace {

std::vector<DocumentFormat> allButMarkdown()
{
    std::vector<DocumentFormat> formats;
    std::ranges::remove_copy_if(DocumentFormats::allCases, std::back_inserter(formats), isMarkdown);
    return formats;
}

bool either(const Expectation &row, bool ConversionCapability::*flag)
{
    return (row.toMarkdown && *row.toMarkdown.*flag) || (row.fromMarkdown && *row.fromMarkdown.*flag);
}

std::string tierLabel(const std::optional<ConversionCapability> &capability)
{
    return capability ? label(capability->tier) : "–";
}

QString tierName(const std::optional<ConversionCapability> &capability)
{
    return capability ? QString::fromStdString(std::string(rawValue(capability->tier))) : QString();
}

ConversionPair reversed(const ConversionPair &pair)
{
    return {pair.target, pair.source};
}

} // namespace

bool Expectation::isMacOnly() const
{
    return either(*this, &ConversionCapability::isMacOnly);
}

bool Expectation::requiresNetwork() const
{
    return either(*this, &ConversionCapability::requiresNetwork);
}

std::string Expectation::summary() const
{
    std::string text = displayName(format);
    if (isMacOnly())
        text += ", " + T("Needs a Mac app", "Nécessite une application Mac");
    if (requiresNetwork())
        text += ", " + T("Needs the internet", "Nécessite une connexion");
    return text + ", → Markdown " + tierLabel(toMarkdown) + ", Markdown → " + tierLabel(fromMarkdown);
}

ExpectationsModel::ExpectationsModel()
    : m_formats(allButMarkdown())
{
}

std::vector<Expectation> ExpectationsModel::rows() const
{
    std::vector<Expectation> rows;
    for (const DocumentFormat format : m_formats) {
        Expectation row{format, Fidelity::capability(format, DocumentFormat::markdown), std::nullopt};
        if (!isGoogle(format))
            row.fromMarkdown = Fidelity::capability(DocumentFormat::markdown, format);
        rows.push_back(std::move(row));
    }
    return rows;
}

std::string ExpectationsModel::directConversions()
{
    std::vector<ConversionPair> pairs;
    std::ranges::transform(Fidelity::directConversions(), std::back_inserter(pairs), &DirectConversion::pair);
    std::string line;
    for (auto pair = pairs.begin(); pair != pairs.end(); ++pair) {
        const ConversionPair back = reversed(*pair);
        // No pair is in the list twice: only its reverse can have been written.
        if (std::find(pairs.begin(), pair, back) != pair)
            continue;
        const bool hasBack = std::find(pair, pairs.end(), back) != pairs.end();
        if (!line.empty())
            line += " · ";
        line += displayName(pair->source) + (hasBack ? " ⇄ " : " → ") + displayName(pair->target);
    }
    return line;
}

QVariantList ExpectationsModel::rowList() const
{
    QVariantList list;
    for (const Expectation &row : rows()) {
        list.append(
            QVariantMap{{"name", QString::fromStdString(displayName(row.format))}, {"isMacOnly", row.isMacOnly()},
                {"requiresNetwork", row.requiresNetwork()}, {"toMarkdown", tierName(row.toMarkdown)},
                {"fromMarkdown", tierName(row.fromMarkdown)}, {"summary", QString::fromStdString(row.summary())}});
    }
    return list;
}

} // namespace nolfa
