#include "Check.h"

#include "Compare/PlainComparison.h"

namespace {

using nolfa::DiffOperation;

/// Whether the script turns the one sequence into the other, and names each element once.
bool fits(const std::vector<DiffOperation> &script, const std::vector<std::string> &left,
    const std::vector<std::string> &right)
{
    std::size_t x = 0;
    std::size_t y = 0;
    for (const DiffOperation &operation : script) {
        if (const auto *equal = std::get_if<DiffOperation::Equal>(&operation.value)) {
            if (equal->left != x || equal->right != y || equal->length == 0)
                return false;
            for (std::size_t i = 0; i < equal->length; ++i) {
                if (left.at(x++) != right.at(y++))
                    return false;
            }
        } else if (const auto *deletion = std::get_if<DiffOperation::Delete>(&operation.value)) {
            if (deletion->left != x || deletion->length == 0)
                return false;
            x += deletion->length;
        } else if (const auto *insertion = std::get_if<DiffOperation::Insert>(&operation.value)) {
            if (insertion->right != y || insertion->length == 0)
                return false;
            y += insertion->length;
        }
    }
    return x == left.size() && y == right.size();
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    constexpr std::size_t largest = 400; // the plain algorithm keeps every pass whole
    if (size < 2 || size > largest)
        return 0;
    const std::optional<std::int64_t> maxD = data[0] == 0 ? std::nullopt : std::optional<std::int64_t>(data[0] - 2);
    const std::size_t middle = 2 + (size - 2) * data[1] / 255;
    std::vector<std::string> left;
    std::vector<std::string> right;
    for (std::size_t i = 2; i < size; ++i)
        (i < middle ? left : right).emplace_back(1, static_cast<char>(data[i]));
    const std::vector<DiffOperation> script = nolfa::MyersDiff::operations(std::span(left), std::span(right), maxD);
    check(fits(script, left, right));
    check(script == nolfa::testing::plainOperations(left, right, maxD));
    return 0;
}
