#pragma once

#include <functional>
#include <stop_token>

namespace folvane {

/// Works on a picture's rows in bands side by side on all cores: `work(first, end)`. Throws what that throws, and
/// Cancelled as soon as a stop is asked for: bands that have begun go on meanwhile, so what they use must belong to them.
void inBands(int rows, const std::stop_token& stop, const std::function<void(int first, int end)>& work);

} // namespace folvane
