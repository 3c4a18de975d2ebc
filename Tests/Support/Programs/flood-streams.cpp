// Writes as many bytes as told to each of its output streams, a piece at a time to each in turn.
#include <cstdlib>
#include <string>
#include <unistd.h>

int main(int argc, char **argv)
{
    const long total = argc > 1 ? std::atol(argv[1]) : 0;
    const std::string out(4096, 'o');
    const std::string error(4096, 'e');
    for (long written = 0; written < total; written += static_cast<long>(out.size())) {
        if (::write(STDOUT_FILENO, out.data(), out.size()) < 0
            || ::write(STDERR_FILENO, error.data(), error.size()) < 0)
            return 1;
    }
    return 0;
}
