#include "app/processexit.h"

#include <windows.h>

#include <cstdio>
#include <cstdlib>

void endProcess(int status)
{
    std::fflush(nullptr);
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(status));
    std::_Exit(status); // not reached: TerminateProcess does not return for the caller
}
