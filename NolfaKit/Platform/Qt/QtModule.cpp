// What libNolfaKitQt.so shows of itself.
#include "Platform/QtFunctions.h"

#include "Platform/Qt/PagePrinter.h"
#include "Platform/Qt/PictureDecoder.h"

extern "C" {
extern const nolfa::QtFunctions nolfaQtFunctions;
const nolfa::QtFunctions nolfaQtFunctions{
    .printHTML = nolfa::PagePrinter::print,
    .openPicture = nolfa::PictureDecoder::open,
};
}
