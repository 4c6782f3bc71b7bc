#pragma once

#include <exception>
#include <stop_token>

namespace folvane {

/// How a job ends that its user stopped. It travels like any error, but nobody is ever shown it.
class Cancelled : public std::exception {
public:
    const char* what() const noexcept override { return "Cancelled"; }
};

/// The check between two steps of a job: throws Cancelled once stop was requested.
inline void throwIfStopped(const std::stop_token& stop)
{
    if (stop.stop_requested())
        throw Cancelled();
}

} // namespace folvane
