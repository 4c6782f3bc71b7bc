#include "engine/PagePictures.h"

#include "platform/tasks/spawn.h"

#include <QElapsedTimer>
#include <QScopedValueRollback>

#include <algorithm>

namespace folvane {

namespace {

constexpr qsizetype keptKilobytes = 32 * 1024; // at least, for scrolling back
constexpr int longestTurn = 4; // milliseconds that the interface gives to unpacking and fitting at once

qsizetype kilobytes(const QSize& picture)
{
    return qsizetype(picture.width()) * picture.height() * 4 / 1024 + 1;
}

} // namespace

PagePictures::PagePictures(Thumbnails& thumbnails, QObject* parent)
    : QObject(parent), m_thumbnails(thumbnails), m_fitted(keptKilobytes)
{
    m_nextTurn.setSingleShot(true);
    connect(&m_nextTurn, &QTimer::timeout, this, [this] {
        bringMore();
        emit changed();
    });
    connect(&thumbnails, &Thumbnails::changed, this, &PagePictures::follow);
    connect(&thumbnails, &Thumbnails::failed, this, &PagePictures::giveUp);
}

void PagePictures::setRoom(const QSize& room)
{
    if (room == m_room)
        return;
    m_room = room;
    m_fitted.clear();
}

QPixmap PagePictures::fitted(const QImage& picture) const
{
    const QSize size = picture.size().scaled(m_room, Qt::KeepAspectRatio);
    if (m_room.isEmpty() || size.width() >= picture.width())
        return QPixmap::fromImage(picture);
    const QSize shown = size.expandedTo(QSize(1, 1));
    return QPixmap::fromImage(picture.scaled(shown, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
}

PagePictures::State PagePictures::state(const Key& key) const
{
    if (m_fitted.contains(key))
        return State::Ready;
    return m_failed.contains(key) ? State::Failed : State::Waiting;
}

bool PagePictures::isComplete() const
{
    return std::ranges::none_of(m_wanted, [this](const Key& key) { return state(key) == State::Waiting; });
}

// More than the shared store keeps would drive each other out of it for ever.
void PagePictures::want(const QList<Key>& keys)
{
    m_wanted = keys.first(std::min<qsizetype>(keys.size(), Thumbnails::mostInAll));
    const QSet<Key> wanted(m_wanted.begin(), m_wanted.end());
    m_failed.intersect(wanted);
    m_thumbnails.want(this, wanted);
    makeRoom();
    bringMore();
}

// What is wanted is never driven out: there is room for it, and what was used last goes last.
void PagePictures::makeRoom()
{
    if (m_wanted.isEmpty())
        m_fitted.clear();
    const QSize largest =
        m_room.isEmpty() ? QSize(Thumbnails::longestSmallSide, Thumbnails::longestSmallSide) : m_room;
    m_fitted.setMaxCost(std::max(keptKilobytes, m_wanted.size() * kilobytes(largest)));
    for (const Key& key : m_wanted)
        m_fitted.object(key);
}

void PagePictures::take(const Key& key)
{
    const QPixmap picture = fitted(m_thumbnails.image(key));
    m_fitted.insert(key, new QPixmap(picture), kilobytes(picture.size()));
}

// A picture that is there is taken, and only what is not there is asked for: asking for the other would end at once.
void PagePictures::bringMore()
{
    if (m_bringing)
        return;
    const QScopedValueRollback bringing(m_bringing, true);
    QElapsedTimer turn;
    turn.start();
    for (const Key& key : QList(m_wanted)) {
        if (m_fitted.contains(key))
            continue;
        if (m_thumbnails.contains(key)) {
            if (turn.hasExpired(longestTurn))
                return m_nextTurn.start();
            take(key);
        } else if (state(key) == State::Waiting && m_underWay < mostUnderWay
                   && !m_thumbnails.isLoading(key)) {
            spawn(load(key));
        }
    }
}

QCoro::Task<> PagePictures::load(Key key)
{
    ++m_underWay;
    const QPointer<PagePictures> alive(this);
    QCoro::Task<> loading = m_thumbnails.load(key);
    co_await loading;
    if (!alive)
        co_return;
    --m_underWay;
    bringMore();
}

// Another view may have had it made, and one that has been driven out comes back while its cell shows.
void PagePictures::follow(const Key& key)
{
    if (!m_wanted.contains(key))
        return;
    bringMore();
    emit changed();
}

void PagePictures::giveUp(const Key& key)
{
    if (!m_wanted.contains(key))
        return;
    m_failed.insert(key);
    emit changed();
}

} // namespace folvane
