// Run-time defaults of the sanitizer builds (FB_SANITIZE, FB_FUZZ). They are compiled
// into every executable that links fbagent, so they hold however the program or a test
// is started; options given in ASAN_OPTIONS still come on top.
//
// intercept_tls_get_addr=0: the __tls_get_addr interceptor of GCC's (up to 13) and
// LLVM's (up to 16) runtimes takes a dynamic TLS block that starts 16 bytes past a page
// boundary for one with the header of glibc 2.19 to 2.24, and records the two words in
// front of it as the block's start and size. glibc 2.25 and later put no header there,
// so it records ASan's own chunk header instead, and at exit LeakSanitizer's tracer
// scans that garbage range and dies ("Tracer caught signal 11 ... LeakSanitizer has
// encountered a fatal error", exit status 1). Here the block is libjpeg's 8 bytes of
// TLS, allocated through ASan's malloc when the jpeg image plugin is loaded; whether it
// lands on that offset depends on the heap's history, so a given start fails every
// time or never. tests/harness/tst_dynamictls reproduces it. Without the interception
// only dynamic TLS blocks go unscanned for pointers, which can add leak reports but
// never hide one.
extern "C" __attribute__((visibility("default"), used)) const char *__asan_default_options()
{
    return "intercept_tls_get_addr=0";
}
