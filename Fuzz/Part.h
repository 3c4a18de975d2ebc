#pragma once

#include "Check.h"

#include "Engine/Scratch.h"
#include "Platform/File.h"

/// The input as a file, the same one each time.
inline std::filesystem::path partOf(const std::uint8_t *data, std::size_t size)
{
    static const nolfa::Scratch scratch;
    std::filesystem::path file = scratch.file("part.xml");
    nolfa::File::write(file, textOf(data, size));
    return file;
}
