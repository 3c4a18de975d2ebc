// Leaves its standard input alone for the milliseconds given, then ends.
#include <cstdlib>
#include <unistd.h>

int main(int argc, char **argv)
{
    ::usleep(static_cast<useconds_t>(argc > 1 ? std::atoi(argv[1]) : 0) * 1000);
    return 0;
}
