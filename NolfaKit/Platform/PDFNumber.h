#pragma once

#include <string>

namespace nolfa {

/// Numbers as a PDF writes them: without an exponent, whatever the locale is. What isn't finite becomes 0.
/// Thread-safe.
namespace PDFNumber {

/// With five decimals at most.
void append(std::string &out, double value);

/// With as many decimals as bring the same value back.
void append(std::string &out, float value);

} // namespace PDFNumber

} // namespace nolfa
