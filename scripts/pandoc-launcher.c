/* Starts lib/pandoc/pandoc with the C library and the data that lie beside it, wherever the folder was moved.
 * Linked statically, so that it needs nothing itself. exec keeps the process: signals reach pandoc. */
#include <limits.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

enum { cannotStart = 127, ownArguments = 7 };

static char root[PATH_MAX];

/* The folder that holds bin, lib and share. */
static int findRoot(void)
{
    ssize_t length = readlink("/proc/self/exe", root, sizeof root - 1);
    if (length < 0)
        return -1;
    root[length] = 0;
    for (int level = 0; level < 2; level++) {
        char *slash = strrchr(root, '/');
        if (!slash)
            return -1;
        *slash = 0;
    }
    return 0;
}

static char *concatenate(const char *before, const char *middle, const char *after)
{
    size_t size = strlen(before) + strlen(middle) + strlen(after) + 1;
    char *text = malloc(size);
    if (!text)
        exit(cannotStart);
    snprintf(text, size, "%s%s%s", before, middle, after);
    return text;
}

static char *join(const char *before, const char *after)
{
    return concatenate(before, root, after);
}

int main(int argc, char **argv)
{
    if (findRoot()) {
        perror("pandoc");
        return cannotStart;
    }
    /* Without these two a machine's own data files, or the user's, would be mixed in. Who starts us may put files
     * of its own before ours. */
    setenv("pandoc_datadir", join("", "/share/pandoc"), 1);
    const char *chosen = getenv("NOLFA_PANDOC_DATA");
    char *data = chosen ? concatenate("--data-dir=", chosen, "") : join("--data-dir=", "/share/pandoc/data");
    /* Names of files are bytes to us; in a locale without UTF-8 pandoc would not find one with an accent. */
    setenv("LC_ALL", "C.UTF-8", 1);
    /* Meant for the program that starts us, built for another C library. */
    unsetenv("LD_LIBRARY_PATH");
    unsetenv("LD_PRELOAD");

    char **arguments = calloc((size_t)argc + ownArguments, sizeof *arguments);
    if (!arguments)
        return cannotStart;
    int count = 0;
    char *loader = join("", "/lib/pandoc/ld-linux-x86-64.so.2");
    arguments[count++] = loader;
    arguments[count++] = "--argv0";
    arguments[count++] = "pandoc";
    arguments[count++] = "--library-path";
    arguments[count++] = join("", "/lib/pandoc");
    arguments[count++] = join("", "/lib/pandoc/pandoc");
    arguments[count++] = data;
    for (int index = 1; index < argc; index++)
        arguments[count++] = argv[index];
    execv(loader, arguments);
    perror("pandoc");
    return cannotStart;
}
