#include "flushes_off.h"

#include <dlfcn.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>

namespace bench {

bool FlushesOffAsked() { return std::getenv(flushesOffVariable) != nullptr; }

const char* FlushesOffMethodName() { return "eatmydata loaded into the child"; }

// The fsync the program's calls reach is eatmydata's exactly when the library was loaded first.
bool SetUpFlushes(bool off)
{
    Dl_info library{};
    void* fsyncCalled = dlsym(RTLD_DEFAULT, "fsync");
    const bool eatmydata = fsyncCalled && dladdr(fsyncCalled, &library) && library.dli_fname &&
                           std::strstr(library.dli_fname, "eatmydata") != nullptr;
    return eatmydata == off;
}

}  // namespace bench
