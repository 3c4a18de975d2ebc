#include "Compare/EditScript.h"

namespace nolfa {

void EditScript::equal(std::size_t left, std::size_t right, std::size_t length)
{
    if (length == 0)
        return;
    auto *before = last<DiffOperation::Equal>();
    if (before != nullptr && before->left + before->length == left && before->right + before->length == right)
        before->length += length;
    else
        m_operations.push_back({DiffOperation::Equal{left, right, length}});
}

void EditScript::remove(std::size_t left, std::size_t length)
{
    if (length == 0)
        return;
    auto *before = last<DiffOperation::Delete>();
    if (before != nullptr && before->left + before->length == left)
        before->length += length;
    else
        m_operations.push_back({DiffOperation::Delete{left, length}});
}

void EditScript::insert(std::size_t right, std::size_t length)
{
    if (length == 0)
        return;
    auto *before = last<DiffOperation::Insert>();
    if (before != nullptr && before->right + before->length == right)
        before->length += length;
    else
        m_operations.push_back({DiffOperation::Insert{right, length}});
}

} // namespace nolfa
