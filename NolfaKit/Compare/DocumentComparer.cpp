#include "Compare/DocumentComparer.h"

#include "Compare/ComparedText.h"
#include "Compare/MarkdownBlockParser.h"
#include "Compare/SectionList.h"
#include "Compare/WordCutter.h"
#include "Engine/ConversionError.h"
#include "Engine/Scratch.h"
#include "Platform/CancellationError.h"

#include <algorithm>

namespace nolfa::DocumentComparer {

namespace {

ComparedText load(const std::filesystem::path &url, const ConversionService &service,
    const std::filesystem::path &folder, const std::stop_token &stop)
{
    throwIfStopped(stop);
    std::filesystem::create_directory(folder);
    return ComparedText::load(url, service, folder, stop);
}

/// As WordTokenizer::count() of each, for blocks of any length.
std::size_t words(const std::vector<Block> &blocks, const std::stop_token &stop)
{
    constexpr std::size_t wordsBetweenChecks = 65'536;
    std::size_t sum = 0;
    for (const Block &block : blocks) {
        for (WordCutter cutter(block.text); !cutter.next().empty();) {
            if (++sum % wordsBetweenChecks == 0)
                throwIfStopped(stop);
        }
    }
    return sum;
}

DocumentComparison compareLoaded(
    ComparedText left, ComparedText right, const ComparisonOptions &options, const std::stop_token &stop)
{
    // Each text is let go as soon as it is cut up.
    const auto blocksOf = [&stop](ComparedText &text) {
        std::vector<Block> blocks = MarkdownBlockParser::parse(text.markdown, stop);
        text.markdown = std::string();
        return blocks;
    };
    std::vector<Block> leftBlocks = blocksOf(left);
    std::vector<Block> rightBlocks = blocksOf(right);
    const std::size_t totalWords = words(leftBlocks, stop) + words(rightBlocks, stop);
    const BlockHeadings leftHeadings(leftBlocks);
    const BlockHeadings rightHeadings(rightBlocks);
    BlockAligner::Result result = BlockAligner::align(std::move(leftBlocks), std::move(rightBlocks), options, stop);
    throwIfStopped(stop);
    const ComparisonSummary summary = summarize(result, totalWords);
    return {std::move(left.file), std::move(right.file),
        SectionList::sectionize(std::move(result.changes), leftHeadings, rightHeadings), summary,
        std::chrono::system_clock::now(), options};
}

} // namespace

DocumentComparison compare(const std::filesystem::path &left, const std::filesystem::path &right,
    const ConversionService &service, const ComparisonOptions &options, const std::stop_token &stop)
{
    const Scratch scratch;
    try {
        ComparedText before = load(left, service, scratch.file("left"), stop);
        ComparedText after = load(right, service, scratch.file("right"), stop);
        throwIfStopped(stop);
        return compareLoaded(std::move(before), std::move(after), options, stop);
    } catch (const CancellationError &) {
        throw ConversionError::cancelled();
    }
}

ComparisonSummary summarize(const BlockAligner::Result &result, std::size_t totalWords)
{
    ComparisonSummary summary{.blocksUnchanged = result.unchangedBlocks};
    for (const Change &change : result.changes) {
        summary.blocksAdded += change.as<Change::Inserted>() != nullptr ? 1 : 0;
        summary.blocksRemoved += change.as<Change::Deleted>() != nullptr ? 1 : 0;
        summary.blocksModified += change.as<Change::Modified>() != nullptr ? 1 : 0;
        summary.wordsAdded += change.wordsAdded();
        summary.wordsRemoved += change.wordsRemoved();
    }
    if (totalWords > 0) {
        const auto changed = static_cast<double>(summary.wordsAdded + summary.wordsRemoved);
        summary.similarity = std::max(0.0, 1.0 - changed / static_cast<double>(totalWords));
    }
    return summary;
}

} // namespace nolfa::DocumentComparer
