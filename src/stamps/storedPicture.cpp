#include "stamps/storedPicture.h"

#include "pictures/ImageSamples.h"
#include "platform/files/SourceFile.h"

#include <QBuffer>
#include <QImageReader>

#include <limits>

namespace folvane {

namespace {

constexpr qint64 largestFile = qint64(64) << 20; // bytes
constexpr qint64 mostPixelsOfOne = qint64(1) << 24;

QImage picture(const QByteArray& png, qint64 mostPixels)
{
    QBuffer buffer;
    buffer.setData(png);
    QImageReader reader(&buffer, "png");
    if (!reader.canRead() || !reader.size().isValid()
        || pixelCount(reader.size()) > std::min(mostPixels, mostPixelsOfOne))
        return {};
    return reader.read().convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

} // namespace

QImage storedPicture(const QByteArray& png)
{
    return picture(png, std::numeric_limits<qint64>::max());
}

QImage storedPicture(const QString& path, qint64 mostPixels)
{
    const auto file = SourceFile::tryToOpen(QUrl::fromLocalFile(path)).file;
    return file ? picture(file->readAll(largestFile), mostPixels) : QImage();
}

} // namespace folvane
