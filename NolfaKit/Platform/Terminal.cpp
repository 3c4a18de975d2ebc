#include "Platform/Terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

namespace nolfa::Terminal {

bool isErrorTerminal()
{
    return ::isatty(STDERR_FILENO) == 1;
}

std::size_t errorWidth()
{
    constexpr std::size_t usual = 80;
    winsize size{};
    if (::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0)
        return usual;
    return size.ws_col;
}

} // namespace nolfa::Terminal
