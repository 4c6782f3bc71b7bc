#pragma once

#include "pictures/FanOut.h"

#include <QByteArray>
#include <QImage>
#include <QList>
#include <QSize>
#include <QSizeF>

#include <stop_token>

namespace folvane {

enum class ExportFormat { Png, Jpeg };

/// Pages on their way into picture files. Encodes what has been drawn while the next page is being drawn: one bitmap at
/// most waits beside the files.
class PageExport {
public:
    PageExport(double dpi, ExportFormat format, const std::stop_token& stop);

    /// Of a page that measures `points`.
    QSize pixels(QSizeF points) const;
    /// Waits until one more bitmap may be drawn. Throws EngineError when one could not be encoded, or Cancelled.
    void makeRoom();
    void add(QImage drawn);
    /// The bytes of all files, in order; JPEG at quality 0.85. Throws as makeRoom().
    QList<QByteArray> finished();

private:
    void takeNext();

    double m_dpi;
    ExportFormat m_format;
    FanOut<QByteArray> m_fanOut;
    QList<QByteArray> m_files;
};

} // namespace folvane
