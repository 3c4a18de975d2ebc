#pragma once

#include "Platform/HTMLPrinter.h"

namespace nolfa::PagePrinter {

/// HTMLPrinter::print.
void print(const HTMLPrinter::Job &job, const std::stop_token &stop);

} // namespace nolfa::PagePrinter
