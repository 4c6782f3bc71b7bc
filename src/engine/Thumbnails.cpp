#include "engine/Thumbnails.h"

#include "engine/PDFEngine.h"

#include <QPointer>

#include <algorithm>
#include <iterator>

namespace folvane {

Thumbnails::Thumbnails(PDFEngine& engine, QObject* parent) : QObject(parent), m_engine(engine) {}

QCoro::Task<> Thumbnails::load(Key key)
{
    if (m_images.contains(key) || m_loading.contains(key))
        co_return;
    m_loading.insert(key);
    const QPointer<Thumbnails> alive(this);
    QCoro::Task<std::optional<SendableImage>> making = m_engine.image(key.source, key.turn, key.longSide);
    const std::optional<SendableImage> made = co_await making;
    if (!alive)
        co_return;
    m_loading.remove(key);
    if (made && !made->image.isNull())
        store(key, made->image);
    else
        emit failed(key);
}

// Each load adds one key, so that one eviction by each rule keeps both bounds.
void Thumbnails::store(const Key& key, const QImage& image)
{
    m_images.insert(key, image);
    m_order.append(key);
    if (const QList<Key> big = bigOnes(); big.size() > mostBig)
        evict(big.first());
    if (m_order.size() > mostInAll)
        evict(m_order.first());
    emit changed(key);
}

void Thumbnails::evict(Key key)
{
    m_images.remove(key);
    m_order.removeAll(key);
    emit changed(key);
}

void Thumbnails::keepOnly(const QUrl& source, const FileVersion& version)
{
    const auto known = m_versions.constFind(source);
    const bool isAnother = known != m_versions.constEnd() && *known != version;
    m_versions.insert(source, version);
    if (!isAnother)
        return;
    for (const Key& key : QList(m_order))
        if (key.source.url == source)
            evict(key);
}

QList<Thumbnails::Key> Thumbnails::bigOnes() const
{
    QList<Key> big;
    std::ranges::copy_if(m_order, std::back_inserter(big),
                         [](const Key& key) { return key.longSide > longestSmallSide; });
    return big;
}

} // namespace folvane
