#include "Compare/MyersDiff.h"

#include "Compare/EditScript.h"
#include "Compare/EditSearch.h"
#include "Compare/KeyTable.h"

#include <algorithm>
#include <limits>

namespace nolfa::MyersDiff {

namespace {

using Numbers = std::span<const std::uint32_t>;

/// How many elements of one sequence can at most be matched with one of the other: what both hold, wherever it stands.
std::size_t sharedElements(Numbers left, Numbers right)
{
    std::vector<std::uint32_t> a(left.begin(), left.end());
    std::vector<std::uint32_t> b(right.begin(), right.end());
    std::ranges::sort(a);
    std::ranges::sort(b);
    std::size_t shared = 0;
    for (auto i = a.begin(), j = b.begin(); i != a.end() && j != b.end();) {
        if (*i == *j) {
            ++shared;
            ++i;
            ++j;
        } else if (*i < *j) {
            ++i;
        } else {
            ++j;
        }
    }
    return shared;
}

/// Whether the search can be spared: nothing that both hold, or more differences than are looked for. Both lead to
/// one deletion and one insertion.
bool isReplaced(Numbers left, Numbers right, std::int64_t limit)
{
    // Below this the search itself is as quick.
    constexpr std::size_t worthwhile = 64;
    if (left.size() + right.size() < worthwhile)
        return false;
    const std::size_t shared = sharedElements(left, right);
    return shared == 0 || static_cast<std::int64_t>(left.size() + right.size() - 2 * shared) > limit;
}

/// What lies between the equal start and the equal end.
/// @param offset  the length of the equal start
void appendMiddle(Numbers left, Numbers right, std::size_t offset, std::optional<std::int64_t> maxD,
    const std::stop_token &stop, EditScript &script)
{
    const auto n = static_cast<std::int64_t>(left.size());
    const auto m = static_cast<std::int64_t>(right.size());
    const std::int64_t limit = std::min(std::max<std::int64_t>(maxD.value_or(maxEditDistance(n, m)), 1), n + m);
    std::optional<std::vector<EditSearch::Step>> steps;
    if (n > 0 && m > 0 && !isReplaced(left, right, limit))
        steps = EditSearch(left, right, stop).steps(limit);
    if (!steps) {
        script.remove(offset, left.size());
        script.insert(offset, right.size());
        return;
    }
    std::size_t x = 0;
    std::size_t y = 0;
    const auto passOverEqual = [&] {
        const std::size_t start = x;
        for (; x < left.size() && y < right.size() && left[x] == right[y]; ++x)
            ++y;
        script.equal(offset + start, offset + y - (x - start), x - start);
    };
    passOverEqual();
    for (const EditSearch::Step step : *steps) {
        if (step == EditSearch::Step::deletion)
            script.remove(offset + x++, 1);
        else
            script.insert(offset + y++, 1);
        passOverEqual();
    }
}

/// Numbers both sequences by what @p key sees of an element.
template <typename Element, typename Key>
std::vector<DiffOperation> numbered(std::span<const Element> left, std::span<const Element> right,
    std::optional<std::int64_t> maxD, const std::stop_token &stop, Key key)
{
    KeyTable table;
    const auto numbersOf = [&](std::span<const Element> elements) {
        std::vector<std::uint32_t> numbers;
        numbers.reserve(elements.size());
        for (const Element &element : elements)
            numbers.push_back(table.number(key(element)));
        return numbers;
    };
    const std::vector<std::uint32_t> leftNumbers = numbersOf(left);
    const std::vector<std::uint32_t> rightNumbers = numbersOf(right);
    return operations(Numbers(leftNumbers), Numbers(rightNumbers), maxD, stop);
}

} // namespace

std::vector<DiffOperation> operations(std::span<const std::string> left, std::span<const std::string> right,
    std::optional<std::int64_t> maxD, const std::stop_token &stop)
{
    return numbered(left, right, maxD, stop, [](const std::string &text) { return std::string_view(text); });
}

std::vector<DiffOperation> operations(std::span<const WordToken> left, std::span<const WordToken> right,
    std::optional<std::int64_t> maxD, const std::stop_token &stop)
{
    return numbered(left, right, maxD, stop, [](const WordToken &token) { return std::string_view(token.key); });
}

std::vector<DiffOperation> operations(
    Numbers left, Numbers right, std::optional<std::int64_t> maxD, const std::stop_token &stop)
{
    const auto start = std::ranges::mismatch(left, right);
    const auto prefix = static_cast<std::size_t>(start.in1 - left.begin());
    Numbers leftMiddle = left.subspan(prefix);
    Numbers rightMiddle = right.subspan(prefix);
    while (!leftMiddle.empty() && !rightMiddle.empty() && leftMiddle.back() == rightMiddle.back()) {
        leftMiddle = leftMiddle.first(leftMiddle.size() - 1);
        rightMiddle = rightMiddle.first(rightMiddle.size() - 1);
    }
    EditScript script;
    script.equal(0, 0, prefix);
    appendMiddle(leftMiddle, rightMiddle, prefix, maxD, stop, script);
    const std::size_t leftEnd = prefix + leftMiddle.size();
    script.equal(leftEnd, prefix + rightMiddle.size(), left.size() - leftEnd);
    return script.take();
}

std::int64_t maxEditDistance(std::int64_t n, std::int64_t m)
{
    constexpr std::int64_t ceiling = 20'000;
    const std::int64_t product = n * m;
    if (product < 1)
        return 0;
    // The square root, rounded down, by Newton's iteration.
    std::int64_t x = product;
    for (std::int64_t y = product / 2 + product % 2; y < x; y = (x + product / x) / 2)
        x = y;
    return std::min(4 * x, ceiling);
}

} // namespace nolfa::MyersDiff
