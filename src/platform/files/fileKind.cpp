#include "platform/files/fileKind.h"

#include <QFileInfo>

#include <algorithm>
#include <array>

namespace folvane {

namespace {

// Sorted. Each of them is decoded by pictures.cpp.
constexpr std::array pictureTable{
    "avif", "bmp", "dib", "gif", "heic", "heif", "hif", "icns", "ico", "jfif", "jpe",  "jpeg",
    "jpg",  "pbm", "pgm", "png", "pnm",  "ppm",  "svg", "svgz", "tif", "tiff", "webp",
};

} // namespace

FileKind fileKind(const QUrl& url)
{
    const QString extension = QFileInfo(url.fileName()).suffix().toLower();
    if (extension == u"pdf")
        return FileKind::Pdf;
    const bool known =
        std::ranges::any_of(pictureTable, [&](const char* row) { return extension == QLatin1String(row); });
    return known ? FileKind::Picture : FileKind::Other;
}

QStringList pictureExtensions()
{
    return QStringList(pictureTable.begin(), pictureTable.end());
}

} // namespace folvane
