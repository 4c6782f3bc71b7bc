#include "engine/Thumbnails.h"

#include "engine/PDFEngine.h"
#include "pictures/PackedSamples.h"
#include "pictures/samplesOf.h"
#include "platform/tasks/background.h"

#include <QPointer>

#include <algorithm>
#include <iterator>

namespace folvane {

Thumbnails::Thumbnails(PDFEngine& engine, QObject* parent) : QObject(parent), m_engine(engine) {}

Thumbnails::~Thumbnails() = default;

QImage Thumbnails::image(const Key& key) const
{
    const Picture picture = m_images.value(key);
    std::optional<ImageSamples> samples = picture ? picture->unpacked() : std::nullopt;
    return samples ? imageOf(std::move(*samples)) : QImage();
}

QCoro::Task<> Thumbnails::load(Key key)
{
    if (contains(key) || isLoading(key))
        co_return;
    const auto stop = std::make_shared<std::stop_source>();
    m_loading.insert(key, stop);
    const QPointer<Thumbnails> alive(this);
    QCoro::Task<Picture> making = made(key, stop->get_token());
    const Picture picture = co_await making;
    if (!alive || m_loading.value(key) != stop)
        co_return;
    m_loading.remove(key);
    if (picture)
        store(key, picture);
    else
        emit failed(key);
}

// Packing takes a part of the time that drawing does, and neither the interface nor the next drawing waits for it.
QCoro::Task<Thumbnails::Picture> Thumbnails::made(Key key, std::stop_token stop)
{
    try {
        QCoro::Task<std::optional<SendableImage>> drawing =
            m_engine.image(key.source, key.turn, key.longSide, stop);
        const std::optional<SendableImage> drawn = co_await drawing;
        if (!drawn || drawn->image.isNull())
            co_return Picture();
        const auto pack = [image = drawn->image] {
            return std::make_shared<const PackedSamples>(samplesOf(image), PackedSamples::Effort::Small);
        };
        QCoro::Task<std::shared_ptr<const PackedSamples>> packing = inBackground(pack, stop);
        co_return co_await packing;
    } catch (const Cancelled&) {
        // Nobody wants it any more.
    } catch (const std::bad_alloc&) {
        // Tells of itself as a picture that cannot be made.
    }
    co_return Picture();
}

void Thumbnails::want(const QObject* view, const QSet<Key>& keys)
{
    if (!m_wanted.contains(view))
        connect(view, &QObject::destroyed, this, [this, view] {
            want(view, {});
            m_wanted.remove(view);
        });
    const QSet<Key> before = std::exchange(m_wanted[view], keys);
    for (const Key& key : before) {
        if (isLoading(key) && !isWanted(key))
            m_loading.take(key)->request_stop();
    }
}

bool Thumbnails::isWanted(const Key& key) const
{
    return std::ranges::any_of(m_wanted, [&key](const QSet<Key>& keys) { return keys.contains(key); });
}

// Each load adds one key, so that one eviction by each rule keeps both bounds.
void Thumbnails::store(const Key& key, const Picture& picture)
{
    m_images.insert(key, picture);
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
    for (const Key& key : m_loading.keys())
        if (key.source.url == source)
            m_loading.take(key)->request_stop();
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
