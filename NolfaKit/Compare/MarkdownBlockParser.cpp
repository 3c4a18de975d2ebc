#include "Compare/MarkdownBlockParser.h"

#include "Compare/LineSplitter.h"
#include "Engine/ItemNumber.h"
#include "Platform/CancellationError.h"
#include "Platform/Unicode.h"

#include <algorithm>
#include <charconv>

namespace nolfa {

namespace MarkdownBlockParser {

namespace {

constexpr std::string_view backticks = "```";
constexpr std::string_view tildes = "~~~";

/// A tab counts as four blanks.
std::int64_t indentWidth(std::string_view line)
{
    std::int64_t width = 0;
    for (const char c : line) {
        if (c != ' ' && c != '\t')
            break;
        width += c == ' ' ? 1 : 4;
    }
    return width;
}

std::optional<std::size_t> headingLevel(std::string_view trimmed)
{
    constexpr std::size_t deepest = 6;
    const std::size_t level = std::min(trimmed.find_first_not_of('#'), trimmed.size());
    if (level < 1 || level > deepest || (level < trimmed.size() && trimmed[level] != ' '))
        return std::nullopt;
    return level;
}

std::optional<std::string_view> bulletText(std::string_view trimmed)
{
    if (trimmed.starts_with("- ") || trimmed.starts_with("* ") || trimmed.starts_with("+ "))
        return Unicode::trimmedOfBlanks(trimmed.substr(2));
    std::string_view rest = trimmed;
    if (!takeItemNumber(rest))
        return std::nullopt;
    return Unicode::trimmedOfBlanks(rest);
}

std::string_view withoutHashes(std::string_view text)
{
    const std::size_t start = std::min(text.find_first_not_of('#'), text.size());
    return text.substr(start, text.find_last_not_of('#') + 1 - start);
}

std::string_view fenceOf(std::string_view trimmed)
{
    return trimmed.starts_with(backticks) ? backticks : trimmed.starts_with(tildes) ? tildes : std::string_view();
}

bool take(std::string_view &text, std::string_view word)
{
    if (!text.starts_with(word))
        return false;
    text.remove_prefix(word.size());
    return true;
}

} // namespace

std::optional<std::int64_t> pageNumber(std::string_view line)
{
    std::string_view rest = Unicode::trimmedOfBlanks(line);
    if (!take(rest, "<!--"))
        return std::nullopt;
    Unicode::takeWhiteSpace(rest);
    if (!take(rest, "nolfa:page") || !Unicode::takeWhiteSpace(rest))
        return std::nullopt;
    const std::string_view number = rest;
    if (!Unicode::takeDigits(rest))
        return std::nullopt;
    const std::string_view digits = number.substr(0, number.size() - rest.size());
    Unicode::takeWhiteSpace(rest);
    if (rest != "-->")
        return std::nullopt;
    // Digits of other scripts are digits, but make no number.
    std::int64_t page = 0;
    const auto [end, failure] = std::from_chars(digits.data(), digits.data() + digits.size(), page);
    if (failure != std::errc() || end != digits.data() + digits.size())
        return std::nullopt;
    return page;
}

std::optional<std::pair<BlockKind, std::string_view>> classify(std::string_view line)
{
    using Opening = std::pair<BlockKind, std::string_view>;
    const std::string_view trimmed = Unicode::trimmedOfBlanks(line);
    if (trimmed.empty())
        return std::nullopt;
    if (const std::optional<std::size_t> level = headingLevel(trimmed)) {
        const std::string_view title = Unicode::trimmedOfBlanks(trimmed.substr(*level));
        return Opening(
            BlockKind::heading(static_cast<std::int64_t>(*level)), Unicode::trimmedOfBlanks(withoutHashes(title)));
    }
    if (trimmed.front() == '|')
        return Opening(BlockKind::tableRow(), trimmed);
    if (trimmed.front() == '>')
        return Opening(BlockKind::quote(), Unicode::trimmedOfBlanks(trimmed.substr(1)));
    if (const std::optional<std::string_view> text = bulletText(trimmed))
        return Opening(BlockKind::listItem(indentWidth(line) / 2), *text);
    return std::nullopt;
}

namespace {

/// The lines of one document, taken in order.
class Reader {
public:
    explicit Reader(const std::stop_token &stop)
        : m_stop(stop)
    {
    }

    std::vector<Block> read(std::string_view text)
    {
        for (LineSplitter lines(text); lines.next();)
            take(lines.line());
        if (!m_fence.empty())
            endFence();
        flush();
        return std::move(m_blocks);
    }

private:
    void take(std::string_view line)
    {
        if (++m_lines % linesBetweenChecks == 0)
            throwIfStopped(m_stop);
        const std::string_view trimmed = Unicode::trimmedOfBlanks(line);
        if (!m_fence.empty())
            takeCode(line, trimmed);
        else if (trimmed.empty())
            flush();
        else if (const std::optional<std::int64_t> page = trimmed.front() == '<' ? pageNumber(line) : std::nullopt)
            takePage(*page);
        else if (m_fence = fenceOf(trimmed); !m_fence.empty())
            startFence(line);
        else if (const auto opening = classify(line))
            open(opening->first, opening->second);
        else
            takePlain(trimmed);
    }

    void takePage(std::int64_t page)
    {
        flush();
        m_currentPage = page;
    }

    void open(BlockKind kind, std::string_view text)
    {
        flush();
        m_pending = text;
        m_kind = kind;
        m_page = m_currentPage;
        // A heading never goes on in the next line.
        if (kind.value() == BlockKind::Case::heading)
            flush();
    }

    void takePlain(std::string_view trimmed)
    {
        if (!m_kind) {
            m_kind = BlockKind::paragraph();
            m_page = m_currentPage;
        } else {
            m_pending += ' ';
        }
        m_pending += trimmed;
    }

    /// The one way in which a pending block ends.
    void flush()
    {
        if (m_kind)
            add(*m_kind, std::move(m_pending), m_page);
        m_pending.clear();
        m_kind.reset();
        m_page.reset();
    }

    void startFence(std::string_view line)
    {
        flush();
        m_code = line;
    }

    void takeCode(std::string_view line, std::string_view trimmed)
    {
        m_code += '\n';
        m_code += line;
        if (trimmed.starts_with(m_fence))
            endFence();
    }

    void endFence()
    {
        add(BlockKind::code(), std::move(m_code), m_currentPage);
        m_code.clear();
        m_fence = {};
    }

    void add(BlockKind kind, std::string text, std::optional<std::int64_t> page)
    {
        const std::string_view trimmed = Unicode::trimmed(text);
        if (trimmed.empty())
            return;
        if (trimmed.size() != text.size())
            text = std::string(trimmed);
        m_blocks.emplace_back(kind, std::move(text), m_blocks.size(), page, m_stop);
    }

    static constexpr std::size_t linesBetweenChecks = 1024;
    const std::stop_token &m_stop;
    std::size_t m_lines = 0;
    std::vector<Block> m_blocks;
    std::optional<std::int64_t> m_currentPage;
    /// The pending block; no kind means there is none.
    std::string m_pending;
    std::optional<BlockKind> m_kind;
    std::optional<std::int64_t> m_page;
    /// The code block under way, and what closes it; no fence means there is none.
    std::string m_code;
    std::string_view m_fence;
};

} // namespace

std::vector<Block> parse(std::string_view text, const std::stop_token &stop)
{
    return Reader(stop).read(text);
}

} // namespace MarkdownBlockParser

} // namespace nolfa
