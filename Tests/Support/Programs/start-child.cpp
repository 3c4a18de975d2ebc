// Starts a child that sleeps, writes the child's number to the file named, and waits for it.
#include <cstdio>
#include <sys/wait.h>
#include <unistd.h>

int main(int argc, char **argv)
{
    const pid_t child = ::fork();
    if (child == 0) {
        for (;;)
            ::pause();
    }
    std::FILE *file = argc > 1 ? std::fopen(argv[1], "w") : nullptr;
    if (file == nullptr)
        return 1;
    std::fprintf(file, "%d\n", static_cast<int>(child));
    std::fclose(file);
    return ::waitpid(child, nullptr, 0) == child ? 0 : 1;
}
