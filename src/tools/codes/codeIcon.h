#pragma once

#include "codes/content/CodeContent.h"
#include "controls/style/icons.h"

namespace folvane {

/// The picture of the kind.
Icon codeIcon(const CodeContent& content);

} // namespace folvane
