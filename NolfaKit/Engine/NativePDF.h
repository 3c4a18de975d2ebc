#pragma once

#include <filesystem>
#include <stop_token>
#include <string_view>

namespace nolfa {

/// HTML on paper, with the layout engine that the application brings along.
namespace NativePDF {

/// Blocks; may be called from any thread, by several at the same time. The paper is NolfaFormat::paper(), with margins
/// of 54 points. Only pictures within the HTML (`data:`) are shown; no file and no address that it names is opened.
/// @param html    a complete document, UTF-8
/// @param output  is replaced once the whole PDF stands; a failure leaves it as it was
/// @throws ConversionError: @c engineFailure; @c cancelled after a stop
void render(std::string_view html, const std::filesystem::path &output, const std::stop_token &stop = {});

} // namespace NativePDF

} // namespace nolfa
