#include "Engine/HTMLToken.h"

#include "Platform/Unicode.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace nolfa {

namespace {

constexpr std::string_view blanks = " \t\n\r\f";

bool isLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

char lowered(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::string lowered(std::string_view text)
{
    std::string result(text);
    std::ranges::transform(result, result.begin(), [](char c) { return lowered(c); });
    return result;
}

/// Where the tag that begins the text ends, behind its ">"; the end of the text when it isn't closed.
std::size_t tagEnd(std::string_view html)
{
    char quote = 0;
    for (std::size_t at = 1; at < html.size(); ++at) {
        const char c = html[at];
        if (quote != 0)
            quote = c == quote ? '\0' : quote;
        else if ((c == '"' || c == '\'') && html[at - 1] == '=')
            quote = c;
        else if (c == '>')
            return at + 1;
    }
    return html.size();
}

bool startsWithName(std::string_view text, std::string_view name)
{
    return text.size() >= name.size() && lowered(text.substr(0, name.size())) == name;
}

/// Behind the closing tag of an element whose content is no HTML.
std::size_t rawEnd(std::string_view html, std::size_t from, const std::string &name)
{
    for (std::size_t at = html.find("</", from); at != std::string_view::npos; at = html.find("</", at + 2)) {
        if (startsWithName(html.substr(at + 2), name)) {
            const std::size_t end = html.find('>', at);
            return end == std::string_view::npos ? html.size() : end + 1;
        }
    }
    return html.size();
}

std::size_t commentEnd(std::string_view html)
{
    const bool isComment = html.starts_with("<!--");
    const std::string_view mark = isComment ? "-->" : ">";
    const std::size_t end = html.find(mark, isComment ? 4 : 2);
    return end == std::string_view::npos ? html.size() : end + mark.size();
}

void appendUTF8(std::string &text, std::uint32_t c)
{
    const auto put = [&text](std::uint32_t byte) { text += static_cast<char>(byte); };
    if (c < 0x80) {
        put(c);
    } else if (c < 0x800) {
        put(0xC0U | c >> 6U);
        put(0x80U | (c & 0x3FU));
    } else if (c < 0x10000) {
        put(0xE0U | c >> 12U);
        put(0x80U | (c >> 6U & 0x3FU));
        put(0x80U | (c & 0x3FU));
    } else {
        put(0xF0U | c >> 18U);
        put(0x80U | (c >> 12U & 0x3FU));
        put(0x80U | (c >> 6U & 0x3FU));
        put(0x80U | (c & 0x3FU));
    }
}

/// Appends what an entity's inside ("amp", "#233", "#xE9") stands for.
/// @return whether it is one that we know
bool appendEntity(std::string &text, std::string_view inside)
{
    constexpr std::array<std::pair<std::string_view, char>, 5> named{
        {{"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}}};
    if (!inside.starts_with('#')) {
        const auto *const found = std::ranges::find(named, inside, &std::pair<std::string_view, char>::first);
        if (found != named.end())
            text += found->second;
        return found != named.end();
    }
    const bool isHexadecimal = inside.size() > 1 && lowered(inside[1]) == 'x';
    const std::string_view digits = inside.substr(isHexadecimal ? 2 : 1);
    std::uint32_t number = 0;
    const auto [end, failure] = std::from_chars(digits.begin(), digits.end(), number, isHexadecimal ? 16 : 10);
    const bool isSurrogate = number >= 0xD800 && number <= 0xDFFF;
    if (failure != std::errc() || end != digits.end() || number == 0 || number > 0x10FFFF || isSurrogate)
        return false;
    appendUTF8(text, number);
    return true;
}

std::string withoutEntities(std::string_view text)
{
    constexpr std::size_t longest = 10;
    std::string result;
    while (!text.empty()) {
        const std::size_t start = std::min(text.find('&'), text.size());
        result += text.substr(0, start);
        text.remove_prefix(start);
        if (text.empty())
            break;
        const std::size_t end = text.substr(0, longest).find(';');
        const bool isKnown = end != std::string_view::npos && appendEntity(result, text.substr(1, end - 1));
        if (!isKnown)
            result += '&';
        text.remove_prefix(isKnown ? end + 1 : 1);
    }
    return result;
}

std::string_view takeUntil(std::string_view &text, std::string_view ends)
{
    const std::size_t end = std::min(text.find_first_of(ends), text.size());
    const std::string_view taken = text.substr(0, end);
    text.remove_prefix(end);
    return taken;
}

void skip(std::string_view &text, std::string_view characters)
{
    text.remove_prefix(std::min(text.find_first_not_of(characters), text.size()));
}

std::string_view takeValue(std::string_view &text)
{
    if (!text.starts_with('"') && !text.starts_with('\''))
        return takeUntil(text, blanks);
    const char quote = text.front();
    text.remove_prefix(1);
    const std::string_view value = takeUntil(text, std::string_view(&quote, 1));
    text.remove_prefix(std::min<std::size_t>(1, text.size()));
    return value;
}

} // namespace

HTMLToken HTMLToken::next(std::string_view &html)
{
    const auto take = [&html](Kind itsKind, std::size_t length) {
        HTMLToken token{itsKind, html.substr(0, length), {}, {}};
        html.remove_prefix(length);
        return token;
    };
    const std::size_t start = html.find('<');
    if (start != 0)
        return take(Kind::text, std::min(start, html.size()));
    if (html.size() > 1 && (html[1] == '!' || html[1] == '?'))
        return take(Kind::other, commentEnd(html));
    const bool isClosing = html.size() > 1 && html[1] == '/';
    const std::size_t nameStart = isClosing ? 2 : 1;
    if (html.size() <= nameStart || !isLetter(html[nameStart]))
        return take(Kind::text, 1);

    const std::size_t end = tagEnd(html);
    std::string_view inside = html.substr(nameStart, end - nameStart);
    if (inside.ends_with('>'))
        inside.remove_suffix(1);
    const std::string name = lowered(takeUntil(inside, " \t\n\r\f/"));
    const bool isRaw = !isClosing && (name == "style" || name == "script");
    HTMLToken token = take(isClosing ? Kind::closing : Kind::opening, isRaw ? rawEnd(html, end, name) : end);
    token.name = name;
    token.attributes = inside;
    return token;
}

std::optional<std::string> HTMLToken::attribute(std::string_view wanted) const
{
    std::string_view rest = attributes;
    for (;;) {
        skip(rest, " \t\n\r\f/");
        if (rest.empty())
            return std::nullopt;
        const bool isWanted = lowered(takeUntil(rest, "= \t\n\r\f/")) == wanted;
        skip(rest, blanks);
        std::string_view value;
        if (rest.starts_with('=')) {
            rest.remove_prefix(1);
            skip(rest, blanks);
            value = takeValue(rest);
        }
        if (isWanted)
            return withoutEntities(value);
    }
}

} // namespace nolfa
