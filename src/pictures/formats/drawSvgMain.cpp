// folvane-draw-svg LONGSIDE: draws the SVG from standard input and writes it to standard output as svg.cpp
// reads it. A process of its own, so that drawings from strangers can neither hang nor fill the program that
// shows them.

#include "pictures/formats/svgCleaning.h"
#include "platform/files/inflate.h"

#include <QFile>
#include <QGuiApplication>
#include <QPainter>
#include <QSvgRenderer>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

#include <sys/resource.h>

namespace {

constexpr rlim_t maxSeconds = 20;
#ifdef FOLVANE_SANITIZE // the sanitizer reserves terabytes
constexpr rlim_t maxMemory = RLIM_INFINITY;
#else
constexpr rlim_t maxMemory = rlim_t(3) << 30;
#endif
constexpr qsizetype maxUnpackedBytes = 128 << 20;
constexpr int maxLongSide = 16384;

void limitOurselves()
{
    const rlimit seconds{maxSeconds, maxSeconds};
    ::setrlimit(RLIMIT_CPU, &seconds);
    const rlimit noCore{0, 0};
    ::setrlimit(RLIMIT_CORE, &noCore);
    const rlimit memory{maxMemory, maxMemory};
    ::setrlimit(RLIMIT_AS, &memory);
}

QByteArray unpacked(const QByteArray& bytes)
{
    return bytes.startsWith("\x1F\x8B") ? folvane::inflated(bytes, maxUnpackedBytes) : bytes;
}

QSize drawnSize(const QSvgRenderer& drawing, int longSide)
{
    const QSizeF natural =
        drawing.defaultSize().isEmpty() ? drawing.viewBoxF().size() : QSizeF(drawing.defaultSize());
    const double scale = longSide / std::max(natural.width(), natural.height());
    if (natural.isEmpty() || !std::isfinite(scale))
        return {};
    const auto pixels = [scale](double length) { return std::max(1, int(std::lround(length * scale))); };
    return {pixels(natural.width()), pixels(natural.height())};
}

QImage drawn(const QByteArray& svg, int longSide)
{
    QSvgRenderer drawing;
    if (!drawing.load(svg) || drawnSize(drawing, longSide).isEmpty())
        return {};
    QImage image(drawnSize(drawing, longSide), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    drawing.render(&painter);
    return image;
}

bool writeAnswer(const QImage& image)
{
    QFile output;
    const std::array<qint32, 2> size{image.width(), image.height()};
    const auto pixels = reinterpret_cast<const char*>(image.constBits());
    return output.open(stdout, QIODevice::WriteOnly)
           && output.write(reinterpret_cast<const char*>(size.data()), sizeof size) == qint64(sizeof size)
           && output.write(pixels, image.sizeInBytes()) == image.sizeInBytes() && output.flush();
}

} // namespace

int main(int argc, char** argv)
{
    limitOurselves();
    const QGuiApplication application(argc, argv); // for fonts
    const int longSide = argc == 2 ? QByteArray(argv[1]).toInt() : 0;
    QFile input;
    if (longSide < 1 || longSide > maxLongSide || !input.open(stdin, QIODevice::ReadOnly))
        return EXIT_FAILURE;
    const std::optional<QByteArray> svg = folvane::selfContainedSvg(unpacked(input.readAll()));
    const QImage image = svg ? drawn(*svg, longSide) : QImage();
    return !image.isNull() && writeAnswer(image) ? EXIT_SUCCESS : EXIT_FAILURE;
}
