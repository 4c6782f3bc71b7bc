#pragma once

#include "engine/Thumbnails.h"

#include <QCoro/QCoroTask>

#include <QCache>
#include <QList>
#include <QObject>
#include <QPixmap>
#include <QPointer>
#include <QSet>
#include <QTimer>

namespace folvane {

/// The pictures that one view shows just now: taken from the shared thumbnails, asked for a few at a time, and fitted to
/// the view's cells. A view that shows nothing keeps none.
class PagePictures : public QObject {
    Q_OBJECT

public:
    using Key = Thumbnails::Key;
    enum class State { Ready, Waiting, Failed };

    static constexpr int mostUnderWay = 8;

    explicit PagePictures(Thumbnails& thumbnails, QObject* parent = nullptr);

    /// Pictures are shown no larger than fills `room`, in pixels: scaling down at each painting is slow or ugly.
    void setRoom(const QSize& room);
    State state(const Key& key) const;
    /// Null unless Ready.
    const QPixmap* picture(const Key& key) const { return m_fitted.object(key); }
    /// Everything that is on screen now, most wanted first: the next loads are chosen from it, in this order. What no
    /// view wants any more is not made to its end. A picture that failed is tried again once it has been off the screen.
    void want(const QList<Key>& keys);
    /// Each wanted picture is there, or is known not to come.
    bool isComplete() const;

signals:
    void changed();

private:
    QCoro::Task<> load(Key key);
    void makeRoom();
    void take(const Key& key);
    void bringMore();
    void follow(const Key& key);
    void giveUp(const Key& key);
    QPixmap fitted(const QImage& picture) const;

    Thumbnails& m_thumbnails;
    QSize m_room;
    QCache<Key, QPixmap> m_fitted;
    QList<Key> m_wanted;
    QSet<Key> m_failed;
    int m_underWay = 0;
    bool m_bringing = false;
    QTimer m_nextTurn; ///< what is left to take waits for it
};

} // namespace folvane
