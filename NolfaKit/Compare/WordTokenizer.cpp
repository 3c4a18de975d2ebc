#include "Compare/WordTokenizer.h"

#include "Compare/TextFold.h"
#include "Compare/WordCutter.h"

namespace nolfa::WordTokenizer {

std::vector<std::string> raw(std::string_view text)
{
    std::vector<std::string> words;
    WordCutter cutter(text);
    for (std::string_view word = cutter.next(); !word.empty(); word = cutter.next())
        words.emplace_back(word);
    return words;
}

std::vector<WordToken> tokens(std::string_view text, const ComparisonOptions &options)
{
    std::vector<WordToken> words;
    WordCutter cutter(text);
    for (std::string_view word = cutter.next(); !word.empty(); word = cutter.next())
        words.push_back({std::string(word), key(word, options)});
    return words;
}

std::size_t count(std::string_view text, const ComparisonOptions & /*options*/)
{
    std::size_t words = 0;
    for (WordCutter cutter(text); !cutter.next().empty();)
        ++words;
    return words;
}

std::string key(std::string_view word, const ComparisonOptions &options)
{
    std::string folded = TextFold::fold(word, true, options.ignoreCase, options.ignoreFormattingMarkers);
    if (folded.empty())
        return std::string(word);
    return folded;
}

} // namespace nolfa::WordTokenizer
