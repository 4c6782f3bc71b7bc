#include "pictures/pictureFixtures.h"

#include <QColorSpace>
#include <QFile>
#include <QGuiApplication>

#include <map>

using namespace folvane;

namespace {

constexpr QSize size(160, 96);
constexpr auto drawing = R"svg(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 99 60">
<rect x="5" y="5" width="30" height="20" fill="#c63" stroke-width="2" transform="rotate(9)"/>
<text x="9" y="50" font-size="12">Text</text><path d="M40 5c30 10 20 40 50 50z"/></svg>)svg";

std::map<QString, QByteArray> samplePictures()
{
    const QImage opaque = fourFields(QImage::Format_RGB888, size);
    const QImage clear = plain(QColor(200, 100, 50, 128), QImage::Format_ARGB32, size);
    QImage tagged = opaque;
    tagged.setColorSpace(QColorSpace::DisplayP3);
    std::map<QString, QByteArray> files{
        {"alpha.png", encoded(clear, "png")},
        {"deep.png", encoded(clear.convertToFormat(QImage::Format_RGBA64), "png")},
        {"palette.png", encoded(fourFields(QImage::Format_Indexed8, size), "png")},
        {"profile.png", encoded(tagged, "png")},
        {"plain.svg", drawing},
        {"oriented.jpg", withJpegExif(encoded(opaque, "jpg"), exifBlock(6, true))},
        {"table.jpg", withJpegProfile(encoded(opaque, "jpg"), sample("swappedTable.icc"))},
    };
    for (const char* format : {"bmp", "ico", "icns", "pbm", "ppm", "tif", "webp"})
        files[QStringLiteral("plain.%1").arg(QLatin1String(format))] =
            encoded(opaque.scaled(128, 128), format);
    for (const char* name :
         {"transparent.gif", "ycckInverted.jpg", "progressive.jpg", "arithmetic.jpg", "inksWithProfile.tif",
          "inks16SeparateTiles16.tif", "turned5.heic", "transparent.avif"})
        files[QLatin1String(name)] = sample(QLatin1String(name));
    return files;
}

} // namespace

/// Writes a picture of each kind into the folder that is named: what tests/mutate damages.
int main(int argc, char* argv[])
{
    const QGuiApplication application(argc, argv); // text and formats of Qt need one
    for (const auto& [name, bytes] : samplePictures()) {
        QFile file(application.arguments().value(1) + u'/' + name);
        if (bytes.isEmpty() || !file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
            qWarning("%s could not be written", qPrintable(name));
            return 1;
        }
    }
    return 0;
}
