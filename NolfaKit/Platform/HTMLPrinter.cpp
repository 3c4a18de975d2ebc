#include "Platform/HTMLPrinter.h"

#include "Platform/QtFunctions.h"

namespace nolfa {

void HTMLPrinter::print(const Job &job, const std::stop_token &stop)
{
    QtFunctions::loaded().printHTML(job, stop);
}

} // namespace nolfa
