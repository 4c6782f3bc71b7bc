#pragma once

#include <QStringList>

namespace folvane {

/// What leads to the pages of a document, as MuPDF finds it, pages counted from 1.
struct OutsideView {
    explicit OutsideView(const QString& path);

    bool operator==(const OutsideView&) const = default;

    QStringList links;     ///< "from>to", page by page
    QStringList bookmarks; ///< "title@page", indented by their level; "?" for no page
    QStringList fields;    ///< "name@page=value" for each widget, sorted
};

} // namespace folvane
