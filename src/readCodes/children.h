#pragma once

#include <functional>

namespace folvane {

/// Does the work in a copy of this process, which ends with this one, and waits for it. False when it says so or dies.
bool succeedsInChild(const std::function<bool()>& work);

} // namespace folvane
