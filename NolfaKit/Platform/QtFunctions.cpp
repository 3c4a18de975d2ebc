#include "Platform/QtFunctions.h"

#include "Platform/Module.h"

namespace nolfa {

const QtFunctions &QtFunctions::loaded()
{
    static const auto *const functions
        = static_cast<const QtFunctions *>(Module::entry("NolfaKitQt", "nolfaQtFunctions"));
    return *functions;
}

} // namespace nolfa
