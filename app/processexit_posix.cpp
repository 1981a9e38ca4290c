#include "app/processexit.h"

#include <cstdlib>

void endProcess(int status)
{
    std::exit(status);
}
