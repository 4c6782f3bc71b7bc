// folvane-draw-logo DRAWING SIDE PICTURE: draws a square SVG without texts as a PNG of SIDE pixels.
// A tool of the build; the program itself never reads a drawing to show its logo.

#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>
#include <cstdlib>

int main(int argc, char** argv)
{
    const int side = argc == 4 ? QByteArray(argv[2]).toInt() : 0;
    QSvgRenderer drawing;
    if (side < 1 || side > 4096 || !drawing.load(QString::fromLocal8Bit(argv[1]))) {
        std::fputs("usage: folvane-draw-logo DRAWING SIDE PICTURE\n", stderr);
        return EXIT_FAILURE;
    }
    // Drawn larger and made smaller evenly, as thin parts of a small icon would else fall between pixels.
    const int larger = side * (side <= 64 ? 8 : 2);
    QImage image(larger, larger, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    drawing.render(&painter);
    painter.end();
    const QImage picture = image.scaled(side, side, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    return picture.save(QString::fromLocal8Bit(argv[3]), "PNG") ? EXIT_SUCCESS : EXIT_FAILURE;
}
