#include "engine/PageExport.h"

#include "engine/EngineError.h"
#include "engine/pixelSize.h"
#include "pictures/jpegEncoding.h"

#include <QBuffer>

#include <cmath>

namespace folvane {

namespace {

constexpr int jpegQuality = 85; // of 100
constexpr double pointsPerInch = 72;
constexpr double inchesPerMetre = 1 / 0.0254;
constexpr size_t mostBitmaps = 1; // besides the one being drawn

QByteArray encoded(const QImage& image, ExportFormat format)
{
    if (format == ExportFormat::Jpeg)
        return encodeJpeg(image, jpegQuality);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    const bool isWritten = image.save(&buffer, "PNG");
    bytes.squeeze(); // they may wait long for their file
    return isWritten ? bytes : QByteArray();
}

} // namespace

PageExport::PageExport(double dpi, ExportFormat format, const std::stop_token& stop)
    : m_dpi(dpi), m_format(format), m_fanOut(stop)
{
}

QSize PageExport::pixels(QSizeF points) const
{
    return pixelSize(points, m_dpi / pointsPerInch);
}

void PageExport::makeRoom()
{
    while (m_fanOut.waiting() > mostBitmaps)
        takeNext();
}

void PageExport::add(QImage drawn)
{
    drawn.setDotsPerMeterX(static_cast<int>(std::round(m_dpi * inchesPerMetre)));
    drawn.setDotsPerMeterY(drawn.dotsPerMeterX());
    m_fanOut.add([image = std::move(drawn), format = m_format] { return encoded(image, format); });
}

QList<QByteArray> PageExport::finished()
{
    while (m_fanOut.waiting() > 0)
        takeNext();
    return m_files;
}

void PageExport::takeNext()
{
    QByteArray bytes = m_fanOut.takeNext();
    if (bytes.isEmpty())
        throw EngineError(EngineError::Kind::WriteFailed);
    m_files.append(std::move(bytes));
}

} // namespace folvane
