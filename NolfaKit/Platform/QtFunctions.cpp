#include "Platform/QtFunctions.h"

#include "Platform/PlatformError.h"

#include <dlfcn.h>

namespace nolfa {

namespace {

std::string lastError()
{
    const char *error = ::dlerror();
    return error == nullptr ? "unknown" : error;
}

const QtFunctions &load()
{
    // Found beside our own library, by the run path that both have.
    void *library = ::dlopen("libNolfaKitQt.so", RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr)
        throw PlatformError(lastError());
    void *symbol = ::dlsym(library, "nolfaQtFunctions");
    if (symbol == nullptr)
        throw PlatformError(lastError());
    return *static_cast<const QtFunctions *>(symbol);
}

} // namespace

const QtFunctions &QtFunctions::loaded()
{
    static const QtFunctions &functions = load();
    return functions;
}

} // namespace nolfa
