#include "support/readHook.h"

#include <cerrno>

#include <sys/syscall.h>
#include <sys/types.h>
#include <unistd.h>

namespace folvane {

namespace {

std::function<bool(int)> refuses;
int count = 0;

} // namespace

ReadHook::ReadHook(std::function<bool(int)> hook)
{
    count = 0;
    refuses = std::move(hook);
}

ReadHook::~ReadHook()
{
    refuses = nullptr;
}

int ReadHook::reads() const
{
    return count;
}

} // namespace folvane

// It stands before the C library's.
extern "C" ssize_t pread(int descriptor, void* to, size_t length, off_t offset)
{
    using namespace folvane;
    if (refuses && refuses(count++)) {
        errno = EIO;
        return -1;
    }
    return ::syscall(SYS_pread64, descriptor, to, length, offset);
}
