#include "Platform/Typesetter.h"

#include "Platform/Bundle.h"
#include "Platform/Module.h"
#include "Platform/TypesetterFunctions.h"
#include "Platform/Unicode.h"

namespace nolfa::Typesetter {

namespace {

const TypesetterFunctions &functions()
{
    static const TypesetterFunctions &loaded = [&]() -> const TypesetterFunctions & {
        const auto *const found
            = static_cast<const TypesetterFunctions *>(Module::entry("NolfaKitPango", "nolfaTypesetterFunctions"));
        found->useFolder(Bundle::main().root() / "Fonts");
        return *found;
    }();
    return loaded;
}

} // namespace

bool hasFont(std::string_view postScriptName)
{
    return functions().hasFont(postScriptName);
}

std::optional<std::string> substitute(std::string_view family)
{
    return functions().substitute(family);
}

std::vector<FontFamily> families()
{
    return functions().families();
}

TypesetLine line(std::string_view text, std::string_view postScriptName, const Colour &colour)
{
    return functions().line(Unicode::repaired(text), postScriptName, colour);
}

} // namespace nolfa::Typesetter
