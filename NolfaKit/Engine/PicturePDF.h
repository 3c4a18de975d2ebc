#pragma once

#include "Engine/PDFPicture.h"
#include "Platform/FileWriter.h"
#include "Platform/Geometry.h"

namespace nolfa {

/// A PDF of one page with one picture, written object by object (ISO 32000-1). Thread-safe.
namespace PicturePDF {

/// Writes the whole document.
/// @param page   size in points
/// @param place  where the picture stands on it, turned as it is to be seen, in points
/// @throws std::filesystem::filesystem_error
void write(FileWriter &file, const PDFPicture &picture, const Size &page, const Rectangle &place);

} // namespace PicturePDF

} // namespace nolfa
