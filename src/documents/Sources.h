#pragma once

#include "engine/OpenResult.h"
#include "engine/Thumbnails.h"
#include "platform/files/SourceFile.h"

#include <QCoroTask>

#include <QHash>
#include <QSet>
#include <QString>
#include <QUrl>

#include <functional>
#include <memory>
#include <optional>
#include <stop_token>

namespace folvane {

class PDFEngine;

/// The source files that open work depends on: they stay open in the engine, and nothing is written over them. Work is
/// what has pages of them, and whoever holds them. Made by std::make_shared; on the interface thread.
class Sources : public std::enable_shared_from_this<Sources> {
public:
    /// While a copy of it is somewhere, the sources are in use. May outlive all else.
    class Held;
    using Hold = std::shared_ptr<const Held>;
    using Urls = std::function<QSet<QUrl>()>;

    /// `ofPages` are the sources of all pages that open documents and rows to merge have just now.
    Sources(PDFEngine& engine, Thumbnails& thumbnails, Urls ofPages);
    /// Openings that are under way end.
    ~Sources();
    Q_DISABLE_COPY_MOVE(Sources)

    /// For an operation that has not turned sources into pages yet, or works on after their document is closed.
    Hold hold(const QSet<QUrl>& urls);
    /// Opens one that the caller holds. What the engine holds already answers at once, unless nobody used it until that
    /// hold, and another file has its name by now or it was rewritten: then it is opened anew.
    QCoro::Task<OpenResult> open(QUrl url, std::optional<QString> password = std::nullopt);
    /// What unlocked it.
    std::optional<QString> password(const QUrl& url) const { return m_opened.value(url).password; }
    /// A write to `target` would destroy a source that is in use (links followed, also hard ones).
    bool isInUse(const QUrl& target) const;
    /// The engine lets go of those that nobody uses any more.
    void releaseUnused();

private:
    struct Opened {
        std::optional<FileVersion> version; ///< the one that is held: the path may lead elsewhere by now
        std::optional<QString> password;
    };

    void letGo(const QSet<QUrl>& urls);
    QSet<QUrl> inUse() const;

    std::stop_source m_end;
    PDFEngine& m_engine;
    Thumbnails& m_thumbnails;
    Urls m_ofPages;
    QHash<QUrl, Opened> m_opened;
    QHash<QUrl, int> m_holds;
    QSet<QUrl> m_wereUnused; ///< held now, but not opened since
};

} // namespace folvane
