// Writes the machine's diagnostics dump the way the program's worker does, with
// the same reader and walker, into the file named by the first argument. The
// section headers and any provider error go to standard output.
//
// Exit status: 0 when the dump was written, 2 when the file cannot be created,
// 3 when the reader got no root container (the file is then empty).

#include "sysinfo/dxdiagreader.h"

#include <cstdio>

int main(int argc, char **argv)
{
    const char *path = argc > 1 ? argv[1] : "kvfba_dxdiag.txt";
    std::FILE *file = std::fopen(path, "w");
    if (!file) {
        std::fprintf(stderr, "cannot create %s\n", path);
        return 2;
    }
    bool hadRoot = false;
    {
        DxDiagReader reader;
        hadRoot = reader.hasRoot();
        dumpSections(reader, file);
    }
    std::fclose(file);
    std::fflush(stdout);
    return hadRoot ? 0 : 3;
}
