#pragma once

#include "Platform/Locale.h"

#include <chrono>
#include <cstdint>
#include <string>

namespace nolfa {

/// Values as a locale writes them, in UTF-8. Pure and thread-safe.
namespace LocaleFormat {

/// A file's size in decimal units, rounded as file managers do: whole bytes and kilobytes, tenths of a megabyte,
/// hundredths from a gigabyte on. Zero is spelled out in words.
[[nodiscard]] std::string byteCount(std::int64_t bytes, const Locale &locale);

/// Year, full month and day in the locale's order, in the system's time zone.
[[nodiscard]] std::string longDate(std::chrono::system_clock::time_point date, const Locale &locale);

} // namespace LocaleFormat

} // namespace nolfa
