#pragma once

namespace folvane {

/// Tells screen readers what the controls are that Qt does not know. Call it once, before any window is made.
void installAccessibility();

} // namespace folvane
