// Ends at once, but what it started holds its output streams for the milliseconds given, then says a last word.
#include <cstdlib>
#include <unistd.h>

int main(int argc, char **argv)
{
    const int milliseconds = argc > 1 ? std::atoi(argv[1]) : 0;
    if (::fork() == 0) {
        ::usleep(static_cast<useconds_t>(milliseconds) * 1000);
        return ::write(STDOUT_FILENO, "late", 4) == 4 ? 0 : 1;
    }
    return 7;
}
