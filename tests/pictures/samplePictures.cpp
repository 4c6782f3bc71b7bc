#include "pictures/pictureFixtures.h"

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
    const QImage palette = fourFields(QImage::Format_Indexed8, size);
    std::map<QString, QByteArray> files{
        {"alpha.png", encoded(clear, "png")},
        {"deep.png", encoded(clear.convertToFormat(QImage::Format_RGBA64), "png")},
        {"palette.png", encoded(palette, "png")},
        {"profile.png", withPngProfile(encoded(opaque, "png"), displayP3Profile())},
        {"palette.gif", gifFile(palette, 1)},
        {"plain.svg", drawing},
        {"oriented.jpg", withJpegExif(encoded(opaque, "jpg"), exifBlock(6, true))},
        {"table.jpg", withJpegProfile(encoded(opaque, "jpg"), swappedTableProfile())},
        {"inks.jpg", plainJpeg("\x20\x40\x60\x80", {.model = JpegModel::YcckAdobe}, size)},
        {"progressive.jpg", plainJpeg("\x20\x40\x60", {.progressive = true}, size)},
        {"arithmetic.jpg", plainJpeg("\x20\x40\x60", {.arithmetic = true}, size)},
        {"inks.tif", inkTiff({.iccProfile = greenInksProfile()})},
        {"tiles.tif", inkTiff({.bits = 16, .separate = true, .tile = 16})},
        {"oriented.heic", heifFile(opaque, {.orientation = 5})},
        {"alpha.avif", heifFile(clear, {.codec = HeifCodec::Av1, .iccProfile = displayP3Profile()})},
    };
    for (const char* format : {"bmp", "ico", "icns", "pbm", "ppm", "tif", "webp"})
        files[QStringLiteral("plain.%1").arg(QLatin1String(format))] =
            encoded(opaque.scaled(128, 128), format);
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
