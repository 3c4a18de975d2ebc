#include "Check.h"

#include "Compare/WordTokenizer.h"
#include "Platform/CharacterWalk.h"

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace nolfa;
    if (size == 0)
        return 0;
    const ComparisonOptions options{.ignoreCase = (data[0] & 1U) != 0, .ignoreFormattingMarkers = (data[0] & 2U) != 0};
    const std::string_view text = textOf(data + 1, size - 1);
    // All but the whitespace is in the words, in order.
    std::string kept;
    for (CharacterWalk walk(text); walk.next();) {
        check(!walk.character().empty());
        if (walk.kind() != CharacterClass::whitespace)
            kept += walk.character();
    }
    std::string together;
    const std::vector<std::string> words = WordTokenizer::raw(text);
    for (const std::string &word : words) {
        check(!word.empty());
        together += word;
    }
    check(together == kept);
    check(WordTokenizer::count(text, options) == words.size());
    const std::vector<WordToken> tokens = WordTokenizer::tokens(text, options);
    check(tokens.size() == words.size());
    for (std::size_t i = 0; i < words.size(); ++i)
        check(tokens[i].text == words[i] && !tokens[i].key.empty());
    return 0;
}
