#pragma once

#include <algorithm>

namespace folvane {

/// As many equal columns as fit, none narrower than told unless there is room for one only.
struct AdaptiveColumns {
    int narrowest;
    int spacing;

    int in(int width) const { return std::max(1, (width + spacing) / (narrowest + spacing)); }
    int columnWidth(int width) const { return (width - (in(width)-1) * spacing) / in(width); }
};

} // namespace folvane
