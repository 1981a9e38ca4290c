// Loads the library named by the first argument, touches its thread-local block and
// exits, so that LeakSanitizer's check at exit runs with one dynamic TLS block on record.
// Prints where in its page the block starts.
#include <dlfcn.h>

#include <cstdint>
#include <cstdio>

int main(int argc, char **argv)
{
    if (argc < 2)
        return 2;
    void *module = dlopen(argv[1], RTLD_NOW);
    if (!module) {
        std::fprintf(stderr, "%s\n", dlerror());
        return 2;
    }
    const auto block = reinterpret_cast<char *(*)()>(dlsym(module, "dynamicTlsBlock"));
    if (!block)
        return 2;
    std::printf("offset in page: %u\n", static_cast<unsigned>(reinterpret_cast<std::uintptr_t>(block()) % 4096));
    std::fflush(stdout);
    return 0;
}
