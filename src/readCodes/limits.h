#pragma once

namespace folvane {

/// Bounds this process's memory, for good.
void limitMemory();

/// Bounds the time that it may use its processor, in seconds from its start.
void limitTime(unsigned seconds);

} // namespace folvane
