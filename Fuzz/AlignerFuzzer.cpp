#include "Check.h"

#include "Compare/MarkdownBlockParser.h"
#include "Compare/PlainComparison.h"
#include "Compare/WordTokenizer.h"
#include "Platform/Unicode.h"

#include <set>

namespace {

using namespace nolfa;

/// The words that a block's runs tell, those of one kind left out.
std::vector<std::string> wordsWithout(RunKind left, const std::vector<DiffRun> &runs)
{
    std::vector<std::string> words;
    for (const DiffRun &run : runs) {
        const std::vector<std::string> own
            = run.kind == left ? std::vector<std::string>() : WordTokenizer::raw(run.text);
        words.insert(words.end(), own.begin(), own.end());
    }
    return words;
}

void checkCoverage(const BlockAligner::Result &result, std::size_t left, std::size_t right)
{
    std::set<std::size_t> old;
    std::set<std::size_t> current;
    for (const Change &change : result.changes) {
        check(change.oldBlock() == nullptr || old.insert(change.oldBlock()->index).second);
        check(change.newBlock() == nullptr || current.insert(change.newBlock()->index).second);
    }
    check(old.size() + result.unchangedBlocks == left);
    check(current.size() + result.unchangedBlocks == right);
}

} // namespace

/// Two documents parted by a 0x01, behind a byte of options.
int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (size == 0)
        return 0;
    const ComparisonOptions options{.ignoreWhitespace = (data[0] & 1U) != 0,
        .ignoreCase = (data[0] & 2U) != 0,
        .ignoreFormattingMarkers = (data[0] & 4U) != 0,
        .maxTokens = (data[0] & 8U) != 0 ? 200'000U : data[0] >> 4U};
    const std::string_view text = textOf(data + 1, size - 1);
    const std::size_t middle = std::min(text.find('\x01'), text.size());
    const std::vector<Block> left = MarkdownBlockParser::parse(text.substr(0, middle));
    const std::vector<Block> right = MarkdownBlockParser::parse(text.substr(std::min(middle + 1, text.size())));
    const BlockAligner::Result result = BlockAligner::align(left, right, options);
    checkCoverage(result, left.size(), right.size());
    check(BlockAligner::align(left, left, options) == BlockAligner::Result{{}, left.size()});
    constexpr std::size_t largest = 1500; // for the plain algorithm, which knows valid text only
    if (size > largest || !Unicode::isValidUTF8(text))
        return 0;
    for (const Change &change : result.changes) {
        if (const auto *modification = change.as<Change::Modified>())
            check(wordsWithout(RunKind::inserted, modification->runs) == WordTokenizer::raw(modification->old.text));
    }
    check(result == nolfa::testing::plainAlign(left, right, options));
    return 0;
}
