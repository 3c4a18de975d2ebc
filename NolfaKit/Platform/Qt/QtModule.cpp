// What libNolfaKitQt.so shows of itself.
#include "Platform/QtFunctions.h"

#include "Platform/Qt/PagePrinter.h"

extern "C" {
extern const nolfa::QtFunctions nolfaQtFunctions;
const nolfa::QtFunctions nolfaQtFunctions{.printHTML = nolfa::PagePrinter::print};
}
