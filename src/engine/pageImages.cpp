#include "engine/pageImages.h"

#include "engine/EngineError.h"
#include "pdf/Document.h"
#include "platform/Cancelled.h"
#include "platform/jpeg.h"

#include <QBuffer>

#include <algorithm>
#include <cmath>
#include <limits>

namespace folvane {

namespace {

constexpr int jpegQuality = 85; // of 100
constexpr double pointsPerInch = 72;
constexpr double inchesPerMetre = 1 / 0.0254;

QByteArray encoded(QImage image, double dpi, PictureFormat format)
{
    if (format == PictureFormat::Jpeg)
        return encodeJpeg(image.convertToFormat(QImage::Format_RGB888), jpegQuality);
    image.setDotsPerMeterX(static_cast<int>(std::round(dpi * inchesPerMetre)));
    image.setDotsPerMeterY(image.dotsPerMeterX());
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    return image.save(&buffer, "PNG") ? bytes : QByteArray();
}

} // namespace

QSize pixelSize(QSizeF points, double scale)
{
    const auto pixels = [scale](double side) {
        constexpr double most = std::numeric_limits<int>::max();
        return static_cast<int>(std::clamp(std::round(side * scale), 1.0, most));
    };
    return {pixels(points.width()), pixels(points.height())};
}

QList<QByteArray> pagePictures(const QByteArray& pdf, double dpi, PictureFormat format, std::stop_token stop)
{
    const std::unique_ptr<pdf::Document> document = pdf::Document::fromBytes(pdf);
    if (!document)
        throw EngineError(EngineError::Kind::WriteFailed);
    QList<QByteArray> pictures;
    for (int page = 0; page < document->pageCount(); ++page) {
        throwIfStopped(stop);
        const QSize size = pixelSize(document->geometry(page)->displaySize(0), dpi / pointsPerInch);
        const QImage drawn = document->draw(page, size, 0, stop);
        throwIfStopped(stop);
        QByteArray bytes = drawn.isNull() ? QByteArray() : encoded(drawn, dpi, format);
        if (bytes.isEmpty())
            throw EngineError(EngineError::Kind::WriteFailed);
        pictures.append(std::move(bytes));
    }
    return pictures;
}

} // namespace folvane
