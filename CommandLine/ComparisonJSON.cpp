#include "ComparisonJSON.h"

#include "Platform/JSON.h"

#include <fmt/chrono.h>

namespace nolfa::CommandLine::ComparisonJSON {

namespace {

/// Of the shape. To be raised when a member changes its meaning or goes; new ones may come at any time.
constexpr int version = 1;

JSON number(std::size_t count)
{
    return static_cast<double>(count);
}

JSON page(std::optional<std::int64_t> number)
{
    return number ? JSON(static_cast<double>(*number)) : JSON();
}

/// ISO 8601, in whole seconds of universal time.
JSON date(std::chrono::system_clock::time_point time)
{
    return fmt::format("{:%Y-%m-%dT%H:%M:%SZ}", std::chrono::floor<std::chrono::seconds>(time));
}

JSON json(const ComparedFile &file)
{
    return JSON::Object{{"path", file.url.string()}, {"name", file.name()}, {"format", rawValue(file.format)},
        {"byteSize", static_cast<double>(file.byteSize)}, {"modifiedAt", date(file.modifiedAt)},
        {"normalizationTier", rawValue(file.normalizationTier)}};
}

std::string_view name(BlockKind::Case kind)
{
    switch (kind) {
    case BlockKind::Case::heading:
        return "heading";
    case BlockKind::Case::listItem:
        return "listItem";
    case BlockKind::Case::paragraph:
        return "paragraph";
    case BlockKind::Case::tableRow:
        return "tableRow";
    case BlockKind::Case::code:
        return "code";
    case BlockKind::Case::quote:
        break;
    }
    return "quote";
}

JSON json(const Block *block)
{
    if (block == nullptr)
        return {};
    JSON::Object members{{"kind", name(block->kind.value())}};
    if (block->kind.value() == BlockKind::Case::heading)
        members.emplace_back("level", static_cast<double>(block->kind.level()));
    if (block->kind.value() == BlockKind::Case::listItem)
        members.emplace_back("depth", static_cast<double>(block->kind.depth()));
    members.emplace_back("index", number(block->index));
    members.emplace_back("page", page(block->page));
    members.emplace_back("text", block->text);
    members.emplace_back("normalizedHash", block->normalizedHash);
    return members;
}

JSON json(const DiffRun &run)
{
    return JSON::Object{{"kind", rawValue(run.kind)}, {"text", run.text}, {"words", number(run.words)}};
}

JSON json(const Change &change)
{
    const auto *modification = change.as<Change::Modified>();
    JSON::Object members{{"id", change.id()},
        {"kind",
            modification != nullptr            ? "modified"
                : change.oldBlock() != nullptr ? "deleted"
                                               : "inserted"},
        {"old", json(change.oldBlock())}, {"new", json(change.newBlock())}};
    if (modification != nullptr) {
        JSON::Array runs;
        for (const DiffRun &run : modification->runs)
            runs.push_back(json(run));
        members.emplace_back("runs", std::move(runs));
    }
    return members;
}

JSON json(const ComparisonSection &section)
{
    JSON::Array changes;
    for (const Change &change : section.changes)
        changes.push_back(json(change));
    return JSON::Object{{"id", number(section.id)}, {"title", section.title()},
        {"heading", section.heading ? JSON(*section.heading) : JSON()}, {"leftPage", page(section.leftPage)},
        {"rightPage", page(section.rightPage)}, {"wordsAdded", number(section.wordsAdded())},
        {"wordsRemoved", number(section.wordsRemoved())}, {"changes", std::move(changes)}};
}

JSON json(const ComparisonSummary &summary)
{
    return JSON::Object{{"blocksAdded", number(summary.blocksAdded)}, {"blocksRemoved", number(summary.blocksRemoved)},
        {"blocksModified", number(summary.blocksModified)}, {"blocksUnchanged", number(summary.blocksUnchanged)},
        {"wordsAdded", number(summary.wordsAdded)}, {"wordsRemoved", number(summary.wordsRemoved)},
        {"similarity", summary.similarity}};
}

JSON json(const ComparisonOptions &options)
{
    return JSON::Object{{"ignoreWhitespace", options.ignoreWhitespace}, {"ignoreCase", options.ignoreCase},
        {"ignoreFormattingMarkers", options.ignoreFormattingMarkers}, {"maxTokens", number(options.maxTokens)}};
}

} // namespace

std::string text(const DocumentComparison &comparison, const std::optional<std::filesystem::path> &report)
{
    JSON::Array sections;
    for (const ComparisonSection &section : comparison.sections)
        sections.push_back(json(section));
    JSON::Object members{{"version", version}, {"left", json(comparison.left)}, {"right", json(comparison.right)},
        {"generatedAt", date(comparison.generatedAt)}, {"options", json(comparison.options)},
        {"summary", json(comparison.summary)}, {"isIdentical", comparison.isIdentical()},
        {"changeCount", number(comparison.changeCount())}, {"pageCount", number(comparison.pageCount())},
        {"sections", std::move(sections)}};
    if (report)
        members.emplace_back("report", report->string());
    return JSON(std::move(members)).text();
}

} // namespace nolfa::CommandLine::ComparisonJSON
