#include "shell/PagePictures.h"

#include "engine/PDFEngine.h"
#include "platform/spawn.h"

#include <algorithm>
#include <utility>

namespace folvane {

namespace {

constexpr int mostUnderWay = 8;
constexpr qsizetype cacheKilobytes = 256 * 1024;

qsizetype kilobytes(const QPixmap& picture)
{
    return qsizetype(picture.width()) * picture.height() * 4 / 1024 + 1;
}

} // namespace

PagePictures::PagePictures(PDFEngine& engine, QObject* parent)
    : QObject(parent), m_engine(engine), m_pictures(cacheKilobytes)
{
}

PagePictures::~PagePictures()
{
    for (std::stop_source& request : m_underWay)
        request.request_stop();
}

void PagePictures::setRoom(const QSize& room)
{
    if (room == m_room)
        return;
    m_room = room;
    m_pictures.clear();
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
    if (m_pictures.contains(key))
        return State::Ready;
    return m_failed.contains(key) ? State::Failed : State::Waiting;
}

void PagePictures::want(const QList<Key>& keys)
{
    dropUnwanted(QSet<Key>(keys.begin(), keys.end()));
    m_waiting.clear();
    for (const Key& key : keys) {
        if (state(key) == State::Waiting && !m_underWay.contains(key) && !m_waiting.contains(key))
            m_waiting.append(key);
    }
    startMore();
}

void PagePictures::dropUnwanted(const QSet<Key>& wanted)
{
    m_failed.intersect(wanted);
    m_underWay.removeIf([&wanted](const auto& request) {
        if (wanted.contains(request.key()))
            return false;
        request.value().request_stop();
        return true;
    });
}

void PagePictures::startMore()
{
    while (!m_waiting.isEmpty() && m_underWay.size() < mostUnderWay) {
        const Key key = m_waiting.takeFirst();
        const std::stop_source request;
        m_underWay.insert(key, request);
        spawn(make(key, request.get_token()));
    }
}

QCoro::Task<> PagePictures::make(Key key, std::stop_token stop)
{
    const std::optional<SendableImage> made =
        co_await m_engine.image(key.source, key.turn, key.longSide, stop);
    if (stop.stop_requested()) // `this` may be gone, or wants it no longer
        co_return;
    m_underWay.remove(key);
    if (made && !made->image.isNull()) {
        auto* picture = new QPixmap(fitted(made->image));
        m_pictures.insert(key, picture, kilobytes(*picture));
    } else {
        m_failed.insert(key);
    }
    startMore();
    emit changed();
}

} // namespace folvane
