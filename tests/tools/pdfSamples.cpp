#include "tools/pdfSamples.h"

#include <QImage>
#include <QPainter>
#include <QPdfWriter>
#include <QRandomGenerator>

namespace folvane {

namespace {

/// A sky over a meadow, with a grain that no size of it loses altogether.
QImage photo(quint32 seed)
{
    QImage grain(350, 262, QImage::Format_RGB32);
    QRandomGenerator random(seed);
    const QColor sky = QColor::fromHsv(195 + int(seed) * 7 % 40, 110, 220);
    const QColor meadow = QColor::fromHsv(80 + int(seed) * 11 % 50, 120, 150);
    for (int y = 0; y < grain.height(); ++y) {
        const QColor ground = (y < grain.height() * 3 / 5 ? sky : meadow).darker(100 + y / 6);
        for (int x = 0; x < grain.width(); ++x)
            grain.setPixelColor(x, y, ground.darker(60 + int(random.bounded(100))));
    }
    return grain.scaled(2800, 2100, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

} // namespace

QUrl putPhotos(const QString& path, int pages)
{
    QPdfWriter writer(path);
    QPainter painter(&writer);
    for (int page = 0; page < pages; ++page) {
        if (page > 0)
            writer.newPage();
        painter.drawImage(painter.viewport(), photo(quint32(page)));
    }
    return QUrl::fromLocalFile(path);
}

} // namespace folvane
