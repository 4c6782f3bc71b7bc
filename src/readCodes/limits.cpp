#include "readCodes/limits.h"

#include <sys/resource.h>

namespace folvane {

namespace {

#ifdef FOLVANE_SANITIZE // the sanitizer reserves terabytes
constexpr rlim_t maxMemory = RLIM_INFINITY;
#else
constexpr rlim_t maxMemory = rlim_t(2) << 30;
#endif

} // namespace

void limitMemory()
{
    const rlimit noCore{0, 0};
    ::setrlimit(RLIMIT_CORE, &noCore);
    const rlimit memory{maxMemory, maxMemory};
    ::setrlimit(RLIMIT_AS, &memory);
}

void limitTime(unsigned seconds)
{
    const rlimit time{seconds, seconds};
    ::setrlimit(RLIMIT_CPU, &time);
}

} // namespace folvane
