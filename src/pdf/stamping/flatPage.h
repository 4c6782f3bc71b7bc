#pragma once

#include "pdf/structure/PageGeometry.h"
#include "pdf/structure/qpdfInclude.h"

#include <QTransform>

#include <vector>

namespace folvane::pdf {

/// From the space of a page to that of the same page upright, its crop box at the origin.
QTransform uprightFrom(const PageGeometry& page);

/// What a page consists of once it is flat.
struct FlatPage {
    QSizeF size; ///< points, as it is shown
    QByteArray content;
    QPDFObjectHandle resources;
    std::vector<QPDFObjectHandle> widgets; ///< fields that stood there: they are drawn now
    std::vector<long long> structureKeys;  ///< under which the structure tree knew what stood there
};

/// Turns the page into one without rotation whose crop box is its size: what stood on it becomes a form, annotations are
/// drawn as they look on the screen; links, and what has no appearance of its own, stay what they are. All that led to parts of the old page goes. The content
/// is for the caller to complete and to put there.
FlatPage flatten(QPDF& document, QPDFObjectHandle page, const PageGeometry& geometry);

} // namespace folvane::pdf
