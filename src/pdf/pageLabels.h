#pragma once

#include "pdf/qpdfInclude.h"

#include <vector>

namespace folvane::pdf {

struct DocumentData;

/// A page of the new document and where it comes from.
struct LabelledPage {
    DocumentData* source;
    int sourcePage; ///< zero-based
};

/// The page labels (ISO 32000-2, 12.4.2) of the new document: each page keeps the label that it had. Pages of sources
/// without labels are numbered by their new position. Null when no source has labels.
QPDFObjectHandle joinedPageLabels(const std::vector<LabelledPage>& pages);

} // namespace folvane::pdf
