#include "stamps/cutOut.h"
#include "stamps/liftInk.h"
#include "stamps/paperBehind.h"
#include "stamps/stampPicture.h"

#include <QFile>
#include <QGuiApplication>

#include <cstdio>

// Makes a stamp of a picture and leaves what each step gave beside it, for stampReference.py: four channels without padding, paper in three.
// folvane-stamp-steps PICTURE FOLDER prints width and height, and those of the stamp when there is ink.

namespace {

using namespace folvane;

void keep(const QString& folder, const char* step, const ImageSamples& pixels)
{
    QFile file(folder + u'/' + QLatin1String(step));
    if (!file.open(QIODevice::WriteOnly)
        || file.write(reinterpret_cast<const char*>(pixels.bytes.data()), qint64(pixels.bytes.size())) < 0)
        qFatal("%s cannot be written.", step);
}

} // namespace

int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    QFile source(arguments.value(1));
    const QString folder = arguments.value(2);
    if (!source.open(QIODevice::ReadOnly))
        return 1;
    const std::optional<ImageSamples> pixels = stampPicture({source.readAll()}, {}, 2000);
    if (!pixels)
        return 1;
    keep(folder, "pixels", *pixels);
    std::printf("%d %d", pixels->size.width(), pixels->size.height());
    const ImageSamples paper = paperBehind(*pixels, {});
    keep(folder, "paper", paper);
    const ImageSamples lifted = liftInk(*pixels, paper, {});
    keep(folder, "lifted", lifted);
    if (const std::optional<QRect> box = inkBox(lifted)) {
        const ImageSamples stamp = cutOut(lifted, *box, 1200);
        keep(folder, "stamp", stamp);
        std::printf(" %d %d", stamp.size.width(), stamp.size.height());
    }
    std::puts("");
    return 0;
}
