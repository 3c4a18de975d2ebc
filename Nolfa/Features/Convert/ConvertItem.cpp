#include "Nolfa/Features/Convert/ConvertItem.h"

#include "Engine/ConversionError.h"
#include "Engine/ErrorMessage.h"

namespace nolfa {

std::string ConvertItemState::message() const
{
    if (!m_failure)
        return {};
    try {
        std::rethrow_exception(m_failure);
    } catch (const std::exception &error) {
        return ErrorMessage::sentence(error);
    } catch (...) {
        return ConversionError::engineFailure({}).errorDescription();
    }
}

const char *ConvertItemState::name() const
{
    switch (m_value) {
    case Case::idle:
        return "idle";
    case Case::running:
        return "running";
    case Case::done:
        return "done";
    case Case::failed:
        return "failed";
    }
    return "";
}

} // namespace nolfa
