#pragma once

#include "documents/PageItem.h"

#include <QCoro/QCoroTask>

#include <QCache>
#include <QHash>
#include <QObject>
#include <QPixmap>
#include <QSet>

#include <stop_token>

namespace folvane {

class PDFEngine;

/// Pictures of pages for one view: made by the engine for what the view shows just now, a few at a time, and kept
/// within a bound of memory.
class PagePictures : public QObject {
    Q_OBJECT

public:
    struct Key {
        PageSource source;
        int turn = 0;
        int longSide = 0; ///< pixels

        bool operator==(const Key&) const = default;
        friend size_t qHash(const Key& key, size_t seed = 0)
        {
            return qHashMulti(seed, key.source, key.turn, key.longSide);
        }
    };
    enum class State { Ready, Waiting, Failed };

    explicit PagePictures(PDFEngine& engine, QObject* parent = nullptr);
    ~PagePictures() override;

    /// Pictures are kept no larger than fills `room`, in pixels: scaling down at each painting is slow or ugly.
    void setRoom(const QSize& room);
    State state(const Key& key) const;
    /// Null unless Ready.
    const QPixmap* picture(const Key& key) const { return m_pictures.object(key); }
    /// Everything that is on screen now, most wanted first: it is made in this order, and what is on screen no longer
    /// is not made. A picture that failed is tried again once it has been off the screen.
    void want(const QList<Key>& keys);
    /// Nothing that is wanted is still to come.
    bool isComplete() const { return m_waiting.isEmpty() && m_underWay.isEmpty(); }

signals:
    void changed();

private:
    QCoro::Task<> make(Key key, std::stop_token stop);
    void dropUnwanted(const QSet<Key>& wanted);
    void startMore();

    QPixmap fitted(const QImage& picture) const;

    PDFEngine& m_engine;
    QSize m_room;
    QCache<Key, QPixmap> m_pictures;
    QList<Key> m_waiting;
    QHash<Key, std::stop_source> m_underWay;
    QSet<Key> m_failed;
};

} // namespace folvane
