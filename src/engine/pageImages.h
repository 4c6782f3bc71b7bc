#pragma once

#include <QByteArray>
#include <QList>
#include <QSize>
#include <QSizeF>

#include <stop_token>

namespace folvane {

/// Points times `scale`, rounded to the nearest pixel with halves away from zero, at least 1.
QSize pixelSize(QSizeF points, double scale);

enum class PictureFormat { Png, Jpeg };

/// Every page of a PDF as a picture file at `dpi`; JPEG at quality 0.85. Throws EngineError, or Cancelled between pages.
QList<QByteArray> pagePictures(const QByteArray& pdf, double dpi, PictureFormat format, std::stop_token stop);

} // namespace folvane
