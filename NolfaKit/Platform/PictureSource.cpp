#include "Platform/PictureSource.h"

#include "Platform/QtFunctions.h"

namespace nolfa {

std::unique_ptr<PictureSource> PictureSource::open(std::string_view bytes, const std::stop_token &stop)
{
    return std::unique_ptr<PictureSource>(QtFunctions::loaded().openPicture(bytes, stop));
}

} // namespace nolfa
