#pragma once

#include "pdf/structure/qpdfInclude.h"

#include <vector>

namespace folvane::pdf {

/// The fields of a document's form, flattened: a node stands behind its parent.
struct FormTree {
    struct Node {
        QPDFObjectHandle field;
        int parent = -1; ///< index of the node above, -1 for a top-level field
    };

    std::vector<Node> nodes; ///< only indirect objects: nothing else can be shared with a page

    static FormTree read(QPDFObjectHandle catalogue);
};

} // namespace folvane::pdf
