#include "stamps/StampPictures.h"

#include "stamps/StampLibrary.h"

namespace folvane {

namespace {

QImage halved(const QImage& picture)
{
    const QSize half = (picture.size() / 2).expandedTo(QSize(1, 1));
    return picture.scaled(half, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

} // namespace

QImage StampPictures::atLeast(const QUuid& stamp, double width)
{
    const QHash<QUuid, QImage>& images = m_library.images.value();
    m_copies.removeIf([&](const auto& kept) {
        return kept.value().front().cacheKey() != images.value(kept.key()).cacheKey();
    });
    const QImage image = images.value(stamp);
    if (image.isNull())
        return {};
    std::vector<QImage>& copies = m_copies[stamp];
    if (copies.empty())
        copies.push_back(image);
    size_t found = 0;
    while (copies[found].width() / 2 >= std::max(width, 1.0)) {
        if (++found == copies.size())
            copies.push_back(halved(copies.back()));
    }
    return copies[found];
}

QSize StampPictures::sizeOf(const QUuid& stamp) const
{
    return m_library.images.value().value(stamp).size();
}

} // namespace folvane
