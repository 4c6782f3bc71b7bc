#pragma once

#include "pdf/structure/qpdfInclude.h"

#include <stop_token>
#include <utility>
#include <vector>

namespace folvane::pdf {

using TreeEntry = std::pair<QPDFObjectHandle, QPDFObjectHandle>;

/// The keys and values in the leaves of a name tree ("/Names") or a number tree ("/Nums"), as they stand there, in the
/// tree's order. A node counts where it is met first: a tree whose nodes share their kids would never end. Throws
/// Cancelled, and what qpdf throws.
std::vector<TreeEntry> treeEntries(QPDFObjectHandle root, const char* pairsKey,
                                   const std::stop_token& stop = {});

} // namespace folvane::pdf
