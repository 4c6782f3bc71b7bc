#include "engine/pageImages.h"

#include "engine/EngineError.h"
#include "pdf/Document.h"
#include "pdf/FanOut.h"
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

QByteArray encoded(const QImage& image, PictureFormat format)
{
    if (format == PictureFormat::Jpeg)
        return encodeJpeg(image.convertToFormat(QImage::Format_RGB888), jpegQuality);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    const bool isWritten = image.save(&buffer, "PNG");
    bytes.squeeze(); // they may wait long for their file
    return isWritten ? bytes : QByteArray();
}

/// Encodes drawn pages on all cores while the next one is being drawn: beside those, no bitmap waits.
class Encoding {
public:
    Encoding(double dpi, PictureFormat format, const std::stop_token& stop)
        : m_dpi(dpi), m_format(format), m_fanOut(stop)
    {
    }

    void makeRoom()
    {
        while (m_fanOut.waiting() >= mostBitmaps())
            takeNext();
    }

    void add(QImage drawn)
    {
        drawn.setDotsPerMeterX(static_cast<int>(std::round(m_dpi * inchesPerMetre)));
        drawn.setDotsPerMeterY(drawn.dotsPerMeterX());
        m_fanOut.add([image = std::move(drawn), format = m_format] { return encoded(image, format); });
    }

    QList<QByteArray> finished()
    {
        while (m_fanOut.waiting() > 0)
            takeNext();
        return m_pictures;
    }

private:
    using Pictures = pdf::FanOut<QByteArray>;

    static size_t mostBitmaps() { return static_cast<size_t>(pdf::pixelThreads().maxThreadCount()); }

    void takeNext()
    {
        QByteArray bytes = m_fanOut.takeNext();
        if (bytes.isEmpty())
            throw EngineError(EngineError::Kind::WriteFailed);
        m_pictures.append(std::move(bytes));
    }

    double m_dpi;
    PictureFormat m_format;
    Pictures m_fanOut;
    QList<QByteArray> m_pictures;
};

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
    Encoding encoding(dpi, format, stop);
    for (int page = 0; page < document->pageCount(); ++page) {
        throwIfStopped(stop);
        const QSize size = pixelSize(document->geometry(page)->displaySize(0), dpi / pointsPerInch);
        encoding.makeRoom();
        QImage drawn = document->draw(page, size, 0, stop);
        throwIfStopped(stop);
        if (drawn.isNull())
            throw EngineError(EngineError::Kind::WriteFailed);
        encoding.add(std::move(drawn));
    }
    return encoding.finished();
}

} // namespace folvane
