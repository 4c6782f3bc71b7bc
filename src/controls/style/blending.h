#pragma once

namespace folvane {

/// Whether windows may be partly transparent here: under X11 only while a compositor runs, or they stand on black.
bool screenBlendsWindows();

} // namespace folvane
