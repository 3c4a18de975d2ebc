#include "Platform/Module.h"

#include "Platform/PlatformError.h"

#include <dlfcn.h>
#include <filesystem>

namespace nolfa::Module {

namespace {

/// Where this very code was loaded from.
std::filesystem::path ownFolder()
{
    Dl_info about{};
    const auto *const here = reinterpret_cast<const void *>(&entry);
    if (::dladdr(here, &about) == 0 || about.dli_fname == nullptr)
        throw PlatformError("the engine's own file is unknown");
    return std::filesystem::path(about.dli_fname).parent_path();
}

[[noreturn]] void failWithLoaderError()
{
    const char *message = ::dlerror();
    throw PlatformError(message == nullptr ? "a module can't be loaded" : message);
}

} // namespace

void *entry(const std::string &module, const std::string &name)
{
    // The loader counts how often a file was opened; a second time costs next to nothing.
    void *const handle = ::dlopen((ownFolder() / ("lib" + module + ".so")).c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle == nullptr)
        failWithLoaderError();
    void *const found = ::dlsym(handle, name.c_str());
    if (found == nullptr)
        failWithLoaderError();
    return found;
}

} // namespace nolfa::Module
