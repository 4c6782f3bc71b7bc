#pragma once

#include "records/CompressionStep.h"
#include "records/StampPlacement.h"

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QUrl>
#include <QUuid>

#include <memory>
#include <optional>
#include <stop_token>
#include <vector>

namespace folvane::pdf {

class CompactStamps;
class Document;
struct ImageCache;

/// One page of a new document: a page of a source with the rotation that it shall have.
struct PageCopy {
    Document* source = nullptr;
    int index = 0;          ///< zero-based, within the source
    int rotation = 0;       ///< degrees: 0, 90, 180 or 270
    int mergedDocument = 0; ///< which of several in the new one: links and fields lead to pages of the same
    std::vector<StampPlacement> stamps = {}; ///< what shall lie on it
};

/// A new PDF in the making. It reads from its sources until it has been written, so they must outlive it.
class Assembly {
public:
    /// Copies the pages with what hangs on them. Throws Cancelled between pages, and what the library throws.
    Assembly(const std::vector<PageCopy>& pages, std::stop_token stop);
    ~Assembly();
    Assembly(const Assembly&) = delete;
    Assembly& operator=(const Assembly&) = delete;

    /// Makes its pictures smaller; see ImageRecoder. The cache may be shared by many builds. Throws Cancelled.
    void recodeImages(const CompressionStep& step, std::shared_ptr<ImageCache> cache, std::stop_token stop);

    /// Draws the stamps, which makes their pages flat; see stampPages(). Pictures that are to become smaller must be by then.
    void stamp(const QHash<QUuid, QUrl>& files, const std::optional<CompressionStep>& quality,
               CompactStamps& pictures, const std::stop_token& stop);

    /// The finished file; an empty password means no protection. Throws Cancelled, and what the library throws.
    QByteArray written(const QString& password, std::stop_token stop);

private:
    struct Target;

    std::unique_ptr<Target> m_target;
};

} // namespace folvane::pdf
