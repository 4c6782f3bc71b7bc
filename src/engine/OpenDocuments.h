#pragma once

#include "engine/OpenResult.h"
#include "pdf/Document.h"
#include "pdf/PageDrawer.h"

#include <QHash>
#include <QString>
#include <QUrl>

#include <list>
#include <memory>
#include <optional>

namespace folvane {

/// The sources that the engine holds, by URL, from the first opening until they are let go of. One that is still
/// locked is held, too, so that the answer to the password question meets the very file that was asked about.
class OpenDocuments {
public:
    OpenResult open(const QUrl& url, const std::optional<QString>& password, WhenChanged whenChanged,
                    const std::stop_token& stop);
    void forget(const QUrl& url);

    /// Null when nothing unlocked is held for `url`. A document that was parsed while reads failed is parsed anew: what
    /// could not be read then would count as missing ever after.
    pdf::Document* find(const QUrl& url);
    /// What draws the pages of the document that find() gave last for `url`; it counts as drawn from just now. Only the
    /// last few keep what drawing needs in memory.
    pdf::PageDrawer& drawer(const QUrl& url);

private:
    struct Held {
        std::shared_ptr<const SourceFile> file;
        std::unique_ptr<pdf::Document> document; ///< null while it is locked
        std::optional<pdf::PageDrawer> drawer;   ///< of the document
        std::optional<QString> password;         ///< what unlocked it
        quint64 failedReads = 0;                 ///< of the file, when the document was parsed

        void take(std::unique_ptr<pdf::Document> parsed, quint64 failedReadsBefore);
    };

    void noteDrawing(const QUrl& url);
    OpenResult parse(const QUrl& url, std::shared_ptr<const SourceFile> file,
                     const std::optional<QString>& password, const std::stop_token& stop);

    QHash<QUrl, std::shared_ptr<Held>> m_held;
    std::list<QUrl> m_drawn; ///< the last one drawn from stands first
};

} // namespace folvane
