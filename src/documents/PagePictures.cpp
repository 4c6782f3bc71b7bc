#include "documents/PagePictures.h"

#include "platform/spawn.h"

#include <algorithm>

namespace folvane {

namespace {

constexpr qsizetype fittedKilobytes = 96 * 1024;

qsizetype kilobytes(const QPixmap& picture)
{
    return qsizetype(picture.width()) * picture.height() * 4 / 1024 + 1;
}

} // namespace

PagePictures::PagePictures(Thumbnails& thumbnails, QObject* parent)
    : QObject(parent), m_thumbnails(thumbnails), m_fitted(fittedKilobytes)
{
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
    m_failed.intersect(QSet<Key>(m_wanted.begin(), m_wanted.end()));
    for (const Key& key : m_wanted)
        take(key);
    startMore();
}

void PagePictures::take(const Key& key)
{
    if (m_fitted.contains(key) || !m_thumbnails.contains(key))
        return;
    auto* picture = new QPixmap(fitted(m_thumbnails.image(key)));
    m_fitted.insert(key, picture, kilobytes(*picture));
}

void PagePictures::startMore()
{
    for (const Key& key : QList(m_wanted)) {
        if (m_underWay >= mostUnderWay)
            return;
        if (state(key) == State::Waiting && !m_thumbnails.isLoading(key))
            spawn(load(key));
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
    startMore();
}

// Another view may have had it made, and one that has been driven out comes back while its cell shows.
void PagePictures::follow(const Key& key)
{
    if (!m_wanted.contains(key))
        return;
    take(key);
    startMore();
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
