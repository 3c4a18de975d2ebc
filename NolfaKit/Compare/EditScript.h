#pragma once

#include "Compare/MyersDiff.h"

#include <vector>

namespace nolfa {

/// Gathers the operations of a diff, and joins those of one kind that touch. Never reorders.
class EditScript {
public:
    /// What was made of @c 0 elements is left out.
    /// @{
    void equal(std::size_t left, std::size_t right, std::size_t length);
    void remove(std::size_t left, std::size_t length);
    void insert(std::size_t right, std::size_t length);
    /// @}

    [[nodiscard]] std::vector<DiffOperation> take() { return std::move(m_operations); }

private:
    template <typename Operation> [[nodiscard]] Operation *last()
    {
        return m_operations.empty() ? nullptr : std::get_if<Operation>(&m_operations.back().value);
    }

    std::vector<DiffOperation> m_operations;
};

} // namespace nolfa
