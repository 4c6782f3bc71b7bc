#pragma once

#include <QUuid>

namespace folvane {

/// The modal sheet over a document.
struct FileSheet {
    enum class Kind { Compress, Split, Password, ExportImages };

    Kind kind = Kind::Compress;
    QUuid fileID;

    bool operator==(const FileSheet&) const = default;
};

} // namespace folvane
