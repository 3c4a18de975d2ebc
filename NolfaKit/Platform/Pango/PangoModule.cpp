// What libNolfaKitPango.so shows of itself.
#include "Platform/TypesetterFunctions.h"

#include "Platform/Pango/FontLibrary.h"
#include "Platform/Pango/LineTypesetter.h"

extern "C" {
extern const nolfa::TypesetterFunctions nolfaTypesetterFunctions;
const nolfa::TypesetterFunctions nolfaTypesetterFunctions{
    .hasFont = nolfa::FontLibrary::hasFont,
    .substitute = nolfa::FontLibrary::substitute,
    .families = nolfa::FontLibrary::families,
    .line = nolfa::LineTypesetter::line,
    .useFolder = nolfa::FontLibrary::useFolder,
};
}
