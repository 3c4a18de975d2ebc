#include "Engine/PrintableHTML.h"

#include "Engine/DataURI.h"
#include "Engine/HTMLToken.h"
#include "Engine/ItemNumber.h"
#include "Platform/HTMLPrinter.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <map>
#include <optional>
#include <utility>

namespace nolfa {

namespace {

/// Deeper elements lose their tags, not their text.
constexpr std::size_t deepestElement = 48;
/// Each of them moves its text to the right.
constexpr int deepestIndent = 8;
/// A table within a table costs the layout several times as much as one beside it.
constexpr int deepestTable = 3;
/// Cells beyond it run into the last one; the layout's work grows with the square of a row's width.
constexpr int mostCells = 1000;
/// A cell that claims more than three digits' worth of columns or rows gets one.
constexpr std::size_t longestSpan = 3;
/// Bytes without a blank after which a line may break: the search for a break is quadratic otherwise.
constexpr std::size_t longestWord = 400;

constexpr std::array<std::string_view, 14> voidElements{
    "area", "base", "br", "col", "embed", "hr", "img", "input", "link", "meta", "param", "source", "track", "wbr"};
constexpr std::array<std::string_view, 4> indenting{"blockquote", "dd", "ol", "ul"};
constexpr std::array<std::string_view, 9> tableParts{
    "caption", "colgroup", "col", "thead", "tbody", "tfoot", "tr", "td", "th"};
/// An element of these ends where the next of its name begins.
constexpr std::array<std::string_view, 7> selfEnding{"p", "li", "td", "th", "tr", "dt", "dd"};

template <std::size_t count> bool isOneOf(const std::array<std::string_view, count> &names, std::string_view name)
{
    return std::ranges::find(names, name) != names.end();
}

void appendEscaped(std::string &html, std::string_view text)
{
    for (const char c : text) {
        if (c == '&')
            html += "&amp;";
        else if (c == '<')
            html += "&lt;";
        else if (c == '"')
            html += "&quot;";
        else
            html += c;
    }
}

/// Pixels (1/96 inch) that a number with its unit stands for; absent for what isn't absolute.
std::optional<int> pixels(std::string_view length)
{
    constexpr std::array<std::pair<std::string_view, double>, 6> units{
        {{"px", 1}, {"in", 96}, {"cm", 96 / 2.54}, {"mm", 96 / 25.4}, {"pt", 96.0 / 72}, {"", 1}}};
    constexpr double largest = 100'000;
    double number = 0;
    const auto [end, failure] = std::from_chars(length.begin(), length.end(), number);
    if (failure != std::errc())
        return std::nullopt;
    const std::string_view unit(end, static_cast<std::size_t>(length.end() - end));
    const auto *const found = std::ranges::find(units, unit, &std::pair<std::string_view, double>::first);
    const double value = found == units.end() ? 0 : number * found->second;
    if (!(value >= 1 && value <= largest))
        return std::nullopt;
    return static_cast<int>(std::lround(value));
}

std::string_view trimmed(std::string_view text)
{
    const std::size_t start = std::min(text.find_first_not_of(" \t\r\n"), text.size());
    text.remove_prefix(start);
    return text.substr(0, text.find_last_not_of(" \t\r\n") + 1);
}

/// The value of a property in a style attribute.
std::string_view styleValue(std::string_view style, std::string_view property)
{
    while (!style.empty()) {
        const std::size_t end = std::min(style.find(';'), style.size());
        const std::string_view declaration = style.substr(0, end);
        style.remove_prefix(std::min(end + 1, style.size()));
        const std::size_t colon = declaration.find(':');
        if (colon != std::string_view::npos && trimmed(declaration.substr(0, colon)) == property)
            return trimmed(declaration.substr(colon + 1));
    }
    return {};
}

void appendInPixels(std::string &result, std::string_view declaration)
{
    while (!declaration.empty()) {
        const std::size_t end = std::min(declaration.find_first_of(" :"), declaration.size());
        const std::string_view word = declaration.substr(0, end);
        const std::optional<int> length = word.ends_with("pt") ? pixels(word) : std::nullopt;
        if (length)
            result.append(std::to_string(*length)).append("px");
        else
            result += word;
        result += declaration.substr(end, 1);
        declaration.remove_prefix(std::min(end + 1, declaration.size()));
    }
}

/// A style sheet with its margins in pixels. The layout takes points, in a margin, for nothing.
std::string withMarginsInPixels(std::string_view style)
{
    constexpr std::string_view property = "margin";
    std::string result;
    for (std::size_t start = style.find(property); start != std::string_view::npos; start = style.find(property)) {
        const std::size_t end = std::min(style.find_first_of(";}<", start), style.size());
        result += style.substr(0, start);
        appendInPixels(result, style.substr(start, end - start));
        style.remove_prefix(end);
    }
    return result.append(style);
}

class Rewriter {
public:
    PrintableHTML rewrite(std::string_view html)
    {
        m_result.html.reserve(html.size());
        while (!html.empty()) {
            const HTMLToken token = HTMLToken::next(html);
            switch (token.kind) {
            case HTMLToken::Kind::text:
                addText(token.source);
                break;
            case HTMLToken::Kind::opening:
                open(token);
                break;
            case HTMLToken::Kind::closing:
                close(token.name);
                break;
            case HTMLToken::Kind::other:
                break;
            }
        }
        return std::move(m_result);
    }

private:
    struct Element {
        std::string name;
        std::string_view written; ///< what opened it, as far as it was kept
        std::string type; ///< of a list
        std::optional<long> number; ///< of the next item, in a list that doesn't begin at 1
    };

    void addText(std::string_view text)
    {
        if (text.find_first_not_of(" \t\r\n") != std::string_view::npos)
            m_result.html += std::exchange(m_marker, {});
        // The signs that markers are made with mean nothing in a text.
        for (;;) {
            const std::size_t sign
                = std::min({text.find(HTMLPrinter::markerStart), text.find(HTMLPrinter::markerEnd), text.size()});
            addWords(text.substr(0, sign));
            if (sign == text.size())
                return;
            text.remove_prefix(sign + HTMLPrinter::markerStart.size());
        }
    }

    /// Gives what is far too long for a line places to break at.
    void addWords(std::string_view text)
    {
        while (text.size() > longestWord) {
            const std::size_t blank = text.find_last_of(" \n\t", longestWord);
            std::size_t length = blank == std::string_view::npos ? longestWord : blank + 1;
            // Not within a character or an entity.
            while (blank == std::string_view::npos && length > 1
                && (static_cast<unsigned char>(text[length]) & 0xC0U) == 0x80U)
                --length;
            const std::size_t entity = text.substr(0, length).rfind('&');
            if (blank == std::string_view::npos && entity != std::string_view::npos && entity > 0
                && text.substr(entity, length - entity).find(';') == std::string_view::npos && length - entity < 10)
                length = entity;
            m_result.html += text.substr(0, length);
            if (blank == std::string_view::npos)
                m_result.html += "\u200B";
            text.remove_prefix(length);
        }
        m_result.html += text;
    }

    void open(const HTMLToken &token)
    {
        if (token.name == "script")
            return;
        if (token.name == "img") {
            addPicture(token);
        } else if (token.name == "input") {
            addCheckbox(token);
        } else if (token.name == "style") {
            m_result.html += withMarginsInPixels(token.source);
        } else if (isOneOf(voidElements, token.name)) {
            if (token.name != "link" && token.name != "base")
                m_result.html += token.source;
        } else {
            openElement(token);
        }
    }

    void openElement(const HTMLToken &token)
    {
        if (!m_open.empty() && m_open.back().name == token.name && isOneOf(selfEnding, token.name))
            close(token.name);
        if (token.name == "tr" || token.name == "table")
            m_cells = 0;
        if (token.name == "td" || token.name == "th")
            ++m_cells;
        Element element{token.name, {}, {}, {}};
        if (m_kept < deepestElement && isWithinTables(token.name) && isWithinIndents(token.name)) {
            element.written = token.source;
            ++m_kept;
            m_result.html += hasBoundedSpans(token) ? std::string(token.source) : "<" + token.name + ">";
            // A layout that knows no strikethrough by this name still takes the style that it has.
            if (token.name == "del")
                m_result.html += "<s>";
        }
        if (token.name == "table")
            ++m_tables;
        if (isOneOf(indenting, token.name))
            ++m_indents;
        if (token.name == "ol")
            beginList(token, element);
        if (token.name == "li")
            beginItem();
        ++m_counts[token.name];
        m_open.push_back(std::move(element));
    }

    static bool hasBoundedSpans(const HTMLToken &token)
    {
        return (token.name != "td" && token.name != "th")
            || (token.attribute("colspan").value_or("").size() <= longestSpan
                && token.attribute("rowspan").value_or("").size() <= longestSpan);
    }

    [[nodiscard]] bool isWithinTables(std::string_view name) const
    {
        if (name == "table")
            return m_tables < deepestTable;
        if ((name == "td" || name == "th") && m_cells > mostCells)
            return false;
        return m_tables <= deepestTable || !isOneOf(tableParts, name);
    }

    [[nodiscard]] bool isWithinIndents(std::string_view name) const
    {
        return m_indents < deepestIndent || !isOneOf(indenting, name);
    }

    void close(const std::string &name)
    {
        const auto count = m_counts.find(name);
        if (count == m_counts.end() || count->second == 0)
            return;
        // What stands open within it ends with it.
        for (bool isDone = false; !isDone;) {
            isDone = m_open.back().name == name;
            closeInnermost();
        }
    }

    void closeInnermost()
    {
        const Element &element = m_open.back();
        if (!element.written.empty()) {
            --m_kept;
            m_result.html += element.name == "del" ? "</s></" : "</";
            m_result.html += element.name;
            m_result.html += '>';
        }
        if (element.name == "table")
            --m_tables;
        if (isOneOf(indenting, element.name))
            --m_indents;
        if (element.name == "li")
            m_marker.clear();
        --m_counts[element.name];
        m_open.pop_back();
    }

    static void beginList(const HTMLToken &token, Element &list)
    {
        const std::string start = token.attribute("start").value_or("1");
        long number = 1;
        std::from_chars(start.data(), start.data() + start.size(), number);
        if (number != 1)
            list.number = number;
        list.type = token.attribute("type").value_or("");
    }

    /// The layout counts every list from 1; the number of another is written out.
    void beginItem()
    {
        const auto list = std::find_if(m_open.rbegin(), m_open.rend(),
            [](const Element &element) { return element.name == "ol" || element.name == "ul"; });
        if (list == m_open.rend() || !list->number)
            return;
        setMarker(itemNumber((*list->number)++, list->type) + ".");
    }

    void setMarker(std::string_view marker)
    {
        m_marker = HTMLPrinter::markerStart;
        m_marker += marker;
        m_marker += HTMLPrinter::markerEnd;
    }

    void addCheckbox(const HTMLToken &token)
    {
        if (token.attribute("type") != "checkbox")
            return;
        setMarker(token.attribute("checked") ? "\u2611" : "\u2610");
        m_result.html += std::exchange(m_marker, {});
    }

    void addPicture(const HTMLToken &token)
    {
        m_result.html += std::exchange(m_marker, {});
        m_result.html += "<img src=\"";
        if (const std::optional<std::string> source = token.attribute("src"))
            addSource(*source);
        m_result.html += "\" alt=\"";
        appendEscaped(m_result.html, token.attribute("alt").value_or(""));
        m_result.html += '"';
        const std::string style = token.attribute("style").value_or("");
        for (const std::string_view side : {"width", "height"}) {
            const std::string own = token.attribute(side).value_or("");
            std::optional<int> length = pixels(styleValue(style, side));
            if (!length)
                length = pixels(own);
            if (length)
                m_result.html.append(" ").append(side).append("=\"").append(std::to_string(*length)).append("\"");
        }
        m_result.html += '>';
    }

    void addSource(const std::string &source)
    {
        const auto known = m_known.find(source);
        if (known != m_known.end()) {
            m_result.html += known->second;
            return;
        }
        std::optional<std::string> bytes = DataURI::decoded(source);
        if (!bytes)
            return;
        std::string name(HTMLPrinter::pictureScheme);
        name += std::to_string(m_result.pictures.size());
        m_result.pictures.push_back(std::move(*bytes));
        m_result.html += name;
        // Only what is small is likely to come again, as a logo does.
        constexpr std::size_t small = 64U << 10U;
        if (source.size() <= small)
            m_known.emplace(source, std::move(name));
    }

    PrintableHTML m_result;
    std::vector<Element> m_open;
    std::map<std::string, std::size_t> m_counts; ///< of the open elements, by name
    std::size_t m_kept = 0;
    int m_tables = 0;
    int m_indents = 0;
    int m_cells = 0; ///< in the row that is open
    std::string m_marker; ///< waits for the text of its item
    std::map<std::string, std::string> m_known; ///< picture names by their source
};

} // namespace

PrintableHTML PrintableHTML::from(std::string_view html)
{
    return Rewriter().rewrite(html);
}

} // namespace nolfa
