// Doesn't end when it is asked to. Writes its number to the file named, once it is ready to ignore.
#include <csignal>
#include <cstdio>
#include <unistd.h>

int main(int argc, char **argv)
{
    std::signal(SIGTERM, SIG_IGN);
    if (argc > 1) {
        std::FILE *file = std::fopen(argv[1], "w");
        if (file == nullptr)
            return 1;
        std::fprintf(file, "%d\n", static_cast<int>(::getpid()));
        std::fclose(file);
    }
    for (;;)
        ::pause();
}
