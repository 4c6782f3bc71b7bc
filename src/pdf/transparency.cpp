#include "pdf/transparency.h"

#include <QColor>
#include <QPainter>

#include <algorithm>
#include <vector>

namespace folvane::pdf {

namespace {

/// Full strength wherever anything is visible, nothing elsewhere; from colours that are not premultiplied.
QImage solid(QImage picture)
{
    for (int y = 0; y < picture.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(picture.scanLine(y));
        std::transform(line, line + picture.width(), line,
                       [](QRgb pixel) { return qAlpha(pixel) > 0 ? pixel | 0xff000000U : 0U; });
    }
    return picture;
}

QImage halved(const QImage& picture)
{
    const QSize half(std::max(1, picture.width() / 2), std::max(1, picture.height() / 2));
    return picture.scaled(half, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

} // namespace

/// The picture over ever coarser versions of itself: scaling premultiplied colours spreads the visible ones into the
/// transparent neighbourhood, a level further with each halving (push-pull, after Gortler and others, 1996).
QImage withoutTransparency(const QImage& picture)
{
    std::vector<QImage> coarser{halved(picture.convertToFormat(QImage::Format_ARGB32_Premultiplied))};
    while (coarser.back().size() != QSize(1, 1))
        coarser.push_back(halved(coarser.back()));

    QImage ground(picture.size(), QImage::Format_RGB32);
    ground.fill(Qt::white);
    QPainter painter(&ground);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    for (auto level = coarser.rbegin(); level != coarser.rend(); ++level)
        painter.drawImage(ground.rect(), solid(level->convertToFormat(QImage::Format_ARGB32)));
    painter.drawImage(ground.rect(), solid(picture.convertToFormat(QImage::Format_ARGB32)));
    painter.end();
    return ground.convertToFormat(QImage::Format_RGB888);
}

} // namespace folvane::pdf
