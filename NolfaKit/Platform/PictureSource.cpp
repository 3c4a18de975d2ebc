#include "Platform/PictureSource.h"

#include "Platform/Module.h"

namespace nolfa {

namespace {

using Open = PictureSource *(std::string_view bytes, const std::stop_token &stop);

} // namespace

std::unique_ptr<PictureSource> PictureSource::open(std::string_view bytes, std::stop_token stop)
{
    static Open *const open = reinterpret_cast<Open *>(Module::entry("NolfaPictures", "nolfaOpenPicture"));
    return std::unique_ptr<PictureSource>(open(bytes, stop));
}

} // namespace nolfa
