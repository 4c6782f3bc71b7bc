#pragma once

#include "pdf/structure/qpdfInclude.h"

#include <stop_token>
#include <vector>

namespace folvane::pdf {

struct DocumentData;

/// A page of the new document and where it comes from.
struct LabelledPage {
    DocumentData* source;
    int sourcePage; ///< zero-based
};

/// The page labels (ISO 32000-2, 12.4.2) of the new document: each page keeps the label that it had. Pages of sources
/// without labels are numbered by their new position. Null when no source has labels. Throws Cancelled.
QPDFObjectHandle joinedPageLabels(const std::vector<LabelledPage>& pages, const std::stop_token& stop);

} // namespace folvane::pdf
