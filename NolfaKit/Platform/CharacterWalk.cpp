#include "Platform/CharacterWalk.h"

#include "Platform/PlatformError.h"

#include <limits>
#include <memory>
#include <unicode/brkiter.h>
#include <unicode/locid.h>
#include <unicode/uchar.h>
#include <unicode/utext.h>
#include <unicode/utf8.h>

namespace nolfa {

namespace {

/// What the walk needs to know of a code point.
struct Traits {
    CharacterClass kind;
    bool isFree; ///< between two such code points there is always a boundary, whatever stands around them
    bool isControl; ///< nothing joins it
    bool isMark; ///< joins what precedes it, and has no say in what follows
};

Traits computed(UChar32 codePoint)
{
    const bool isWord = u_isUAlphabetic(codePoint) != 0
        || u_getIntPropertyValue(codePoint, UCHAR_NUMERIC_TYPE) != static_cast<std::int32_t>(U_NT_NONE);
    const auto joining
        = static_cast<UGraphemeClusterBreak>(u_getIntPropertyValue(codePoint, UCHAR_GRAPHEME_CLUSTER_BREAK));
    constexpr UChar32 emojiStyle = 0xFE0F;
    const bool isControl = joining == U_GCB_CONTROL || joining == U_GCB_LF || joining == U_GCB_CR;
    const bool isFree = joining == U_GCB_OTHER || joining == U_GCB_LV || joining == U_GCB_LVT || isControl;
    const bool isAccent = codePoint >= 0x300 && codePoint <= 0x36F && joining == U_GCB_EXTEND;
    return {u_isUWhiteSpace(codePoint) != 0 ? CharacterClass::whitespace
            : isWord                        ? CharacterClass::word
                                            : CharacterClass::other,
        isFree, isControl, isAccent || codePoint == emojiStyle};
}

/// Looking the properties up costs more than all the rest.
Traits traits(UChar32 codePoint)
{
    constexpr std::size_t known = 0x3400; // up to the Han characters
    static const std::array<Traits, known> table = [] {
        std::array<Traits, known> all{};
        for (std::size_t i = 0; i < known; ++i)
            all[i] = computed(static_cast<UChar32>(i));
        return all;
    }();
    return static_cast<std::size_t>(codePoint) < known ? table[static_cast<std::size_t>(codePoint)]
                                                       : computed(codePoint);
}

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wold-style-cast"
#pragma GCC diagnostic ignored "-Wconversion"

/// The code point that begins at @p index, which moves behind it; U+FFFD for a broken sequence.
UChar32 takeCodePoint(std::string_view text, std::size_t &index)
{
    UChar32 codePoint = 0;
    U8_NEXT_OR_FFFD(text.data(), index, text.size(), codePoint);
    return codePoint;
}

#pragma GCC diagnostic pop

/// The rules for all cases. Costs a compilation, so each thread keeps them.
icu::BreakIterator &fullRules()
{
    thread_local std::unique_ptr<icu::BreakIterator> rules;
    if (!rules) {
        UErrorCode status = U_ZERO_ERROR;
        rules.reset(icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
        if (!rules || U_FAILURE(status) != 0)
            throw PlatformError("no rules for characters");
    }
    return *rules; // NOLINT(clang-analyzer-cplusplus.NewDelete): it outlives the call, being the thread's
}

} // namespace

/// Of anything that isn't plain ASCII: most code points are characters by themselves, some take accents, and the
/// library decides the rest.
bool CharacterWalk::nextWide()
{
    m_end = m_begin;
    const UChar32 first = takeCodePoint(m_text, m_end);
    const Traits own = traits(first);
    m_kind = own.kind;
    if (first == '\r') {
        if (m_end < m_text.size() && m_text[m_end] == '\n')
            ++m_end;
        return true;
    }
    while (m_nextBreak < m_breaks.size() && m_breaks[m_nextBreak] <= m_begin)
        ++m_nextBreak;
    if (m_nextBreak < m_breaks.size()) {
        m_end = m_breaks[m_nextBreak];
        return true;
    }
    bool isSimple = own.isFree;
    for (std::size_t index = m_end; isSimple && index < m_text.size();) {
        const Traits following = traits(takeCodePoint(m_text, index));
        if (following.isFree)
            return true;
        isSimple = following.isMark && !own.isControl;
        if (isSimple)
            m_end = index;
    }
    if (!isSimple)
        findBreaks();
    return true;
}

/// Parts the stretch that begins with the current character and ends where two free code points meet.
void CharacterWalk::findBreaks()
{
    std::size_t end = m_begin;
    bool wasFree = traits(takeCodePoint(m_text, end)).isFree;
    while (end < m_text.size()) {
        std::size_t index = end;
        const bool isFree = traits(takeCodePoint(m_text, index)).isFree;
        if (isFree && wasFree)
            break;
        wasFree = isFree;
        end = index;
    }
    UErrorCode status = U_ZERO_ERROR;
    UText stretch = UTEXT_INITIALIZER;
    utext_openUTF8(&stretch, m_text.data() + m_begin, static_cast<std::int64_t>(end - m_begin), &status);
    icu::BreakIterator &rules = fullRules();
    rules.setText(&stretch, status);
    m_breaks.clear();
    m_nextBreak = 0;
    if (U_FAILURE(status) == 0) {
        for (std::int32_t at = rules.next(); at != icu::BreakIterator::DONE; at = rules.next())
            m_breaks.push_back(m_begin + static_cast<std::size_t>(at));
    }
    utext_close(&stretch);
    if (m_breaks.empty())
        throw PlatformError("no rules for characters");
    m_end = m_breaks.front();
}

} // namespace nolfa
