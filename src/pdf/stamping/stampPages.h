#pragma once

#include "pdf/structure/PageGeometry.h"
#include "pdf/structure/qpdfInclude.h"
#include "records/CompressionStep.h"
#include "records/StampPlacement.h"

#include <QHash>
#include <QUrl>
#include <QUuid>

#include <optional>
#include <stop_token>
#include <vector>

namespace folvane::pdf {

class CompactStamps;

/// A page of the document, and what shall lie on it, the last on top.
struct StampedPage {
    QPDFObjectHandle page;
    PageGeometry geometry;
    std::vector<StampPlacement> stamps;
};

/// Makes the pages flat and draws their stamps: with 300 pixels an inch, or what `quality` asks for. A stamp without a file,
/// or whose file cannot be read, is left out. Each picture is in the document once for each density. What leads to these
/// pages from elsewhere goes on leading to the right spot. Throws Cancelled between pages.
void stampPages(QPDF& document, const std::vector<StampedPage>& pages, const QHash<QUuid, QUrl>& files,
                const std::optional<CompressionStep>& quality, CompactStamps& stamps,
                const std::stop_token& stop);

} // namespace folvane::pdf
