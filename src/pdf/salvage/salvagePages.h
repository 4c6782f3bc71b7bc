#pragma once

#include "pdf/salvage/salvageScan.h"

#include <QByteArray>

#include <vector>

namespace folvane::pdf::salvage {

/// An object that takes the place of the one of its number.
struct MadeObject {
    Reference id;
    QByteArray value;
};

struct PageTree {
    Reference catalogue;
    std::vector<MadeObject> made; // what had to be changed: nothing in a sound document
};

/// The catalogue and, under it, a page tree that refers to nothing lost: the one that `preferred` names
/// (/Root of a trailer), else the last in the file. Lost nodes are made anew from the /Parent of what was
/// below them. Where the tree's root is lost, the other roots, then loose pages, stand under a new one in the
/// order of the file. Nothing when there is no page.
std::optional<PageTree> pageTree(const FoundObjects& objects, std::optional<Reference> preferred);

} // namespace folvane::pdf::salvage
