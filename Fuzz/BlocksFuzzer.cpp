#include "Check.h"

#include "Compare/MarkdownBlockParser.h"
#include "Platform/Unicode.h"

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace nolfa;
    std::size_t index = 0;
    std::size_t length = 0;
    for (const Block &block : MarkdownBlockParser::parse(textOf(data, size))) {
        check(block.index == index++);
        check(!block.text.empty() && Unicode::trimmed(block.text) == block.text);
        check(block.kind.value() != BlockKind::Case::heading || (block.kind.level() >= 1 && block.kind.level() <= 6));
        check(!block.page || *block.page >= 0);
        check(block.markdownLine().ends_with(block.text));
        length += block.text.size();
    }
    check(length <= size);
    return 0;
}
