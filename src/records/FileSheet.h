#pragma once

#include <QString>
#include <QUuid>

namespace folvane {

/// The modal sheet over a document.
struct FileSheet {
    enum class Kind { Compress, Split, Password, ExportImages };

    Kind kind = Kind::Compress;
    QUuid fileID;

    bool operator==(const FileSheet&) const = default;

    /// "compress-", "split-", "password-" or "export-", then the document's id.
    QString id() const
    {
        const auto prefix = [this] {
            switch (kind) {
            case Kind::Compress: return QStringLiteral("compress-");
            case Kind::Split: return QStringLiteral("split-");
            case Kind::Password: return QStringLiteral("password-");
            case Kind::ExportImages: return QStringLiteral("export-");
            }
            Q_UNREACHABLE();
        };
        return prefix() + fileID.toString(QUuid::WithoutBraces);
    }
};

} // namespace folvane
