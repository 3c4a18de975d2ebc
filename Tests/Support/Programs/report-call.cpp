// Stands in for pandoc: writes how it was called (its folder, then each argument, a line each) to the file that
// follows "-o", or to standard output without one.
#include <cstdio>
#include <cstring>
#include <unistd.h>

int main(int argc, char **argv)
{
    std::FILE *file = stdout;
    for (int index = 1; index + 1 < argc; ++index) {
        if (std::strcmp(argv[index], "-o") == 0)
            file = std::fopen(argv[index + 1], "w");
    }
    char folder[4096];
    if (file == nullptr || ::getcwd(folder, sizeof folder) == nullptr)
        return 1;
    std::fprintf(file, "%s\n", folder);
    for (int index = 1; index < argc; ++index)
        std::fprintf(file, "%s\n", argv[index]);
    return std::fclose(file) == 0 ? 0 : 1;
}
