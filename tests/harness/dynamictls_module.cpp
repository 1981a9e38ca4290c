// A library whose thread-local block is too large for glibc's spare static TLS, so once
// it is loaded with dlopen, each thread that touches the block gets a dynamic TLS block
// that glibc allocates with malloc: the sanitizer's malloc in a sanitizer build.
thread_local char dynamicBlock[256 * 1024];

extern "C" __attribute__((visibility("default"))) char *dynamicTlsBlock()
{
    return dynamicBlock;
}
