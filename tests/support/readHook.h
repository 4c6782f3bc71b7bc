#pragma once

#include <functional>

namespace folvane {

/// While it lives, `refuses` is asked before each read by position of the process, with how many came before it; where it
/// says yes, that read fails as on a broken disk. Only in programs that are built with readHook.cpp.
class ReadHook {
public:
    explicit ReadHook(std::function<bool(int)> refuses);
    ~ReadHook();
    ReadHook(const ReadHook&) = delete;
    ReadHook& operator=(const ReadHook&) = delete;

    int reads() const;
};

} // namespace folvane
