#pragma once

#include "engine/SendableImage.h"
#include "platform/files/SourceFile.h"
#include "records/PageItem.h"

#include <QCoro/QCoroTask>

#include <QHash>
#include <QImage>
#include <QList>
#include <QObject>
#include <QSet>

#include <memory>
#include <stop_token>

namespace folvane {

class PDFEngine;
class PackedSamples;

/// The page pictures that the views share: small ones for grids and lists, large ones for a page shown big. Memory is
/// bounded by two counts, and pictures are kept packed; the oldest goes first, and closing a document empties nothing.
/// On the interface thread.
class Thumbnails : public QObject {
    Q_OBJECT

public:
    struct Key {
        PageSource source;
        int turn = 0;
        int longSide = 0; ///< pixels, the same at every screen scale

        bool operator==(const Key&) const = default;
        friend size_t qHash(const Key& key, size_t seed = 0)
        {
            return qHashMulti(seed, key.source, key.turn, key.longSide);
        }
    };

    static constexpr int longestSmallSide = longestThumbnail; ///< pixels; what is longer is a big picture
    static constexpr int mostBig = 6;
    static constexpr int mostInAll = 800;

    explicit Thumbnails(PDFEngine& engine, QObject* parent = nullptr);
    ~Thumbnails() override;

    /// Null while there is none. Unpacked at each call: whoever shows it keeps it.
    QImage image(const Key& key) const;
    bool contains(const Key& key) const { return m_images.contains(key); }
    bool isLoading(const Key& key) const { return m_loading.contains(key); }

    /// Has the picture made, once however many ask, and ends when it is there or cannot be made; a page that cannot be
    /// drawn is tried again by a later call. Ends at once when there is nothing to do or somebody else waits for it.
    QCoro::Task<> load(Key key);
    /// What a view shows now, instead of what it showed before. The making of a picture that was wanted and no view
    /// wants any more is stopped; that is no failure.
    void want(const QObject* view, const QSet<Key>& keys);

    /// Pictures of this source that were made when it was another version of the file go.
    void keepOnly(const QUrl& source, const FileVersion& version);

signals:
    /// The picture of this key has come, or is gone.
    void changed(const folvane::Thumbnails::Key& key);
    /// It cannot be made.
    void failed(const folvane::Thumbnails::Key& key);

private:
    using Picture = std::shared_ptr<const PackedSamples>;

    QCoro::Task<Picture> made(Key key, std::stop_token stop);
    void store(const Key& key, const Picture& picture);
    void evict(Key key); // by value: it may be one of the order
    QList<Key> bigOnes() const;
    bool isWanted(const Key& key) const;

    PDFEngine& m_engine;
    QHash<Key, Picture> m_images;
    QList<Key> m_order; ///< of arrival, oldest first
    QHash<Key, std::shared_ptr<std::stop_source>> m_loading;
    QHash<const QObject*, QSet<Key>> m_wanted; ///< by view
    QHash<QUrl, FileVersion> m_versions;       ///< of the sources, when they were opened last
};

} // namespace folvane
