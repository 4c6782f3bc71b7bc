#include "codes/reading/greyPixels.h"

#include "codes/reading/codeMessages.h"

#include <QPainter>

#include <cmath>

#include <fcntl.h>
#include <sys/mman.h>

namespace folvane {

namespace {

QImage onWhite(const QImage& image)
{
    if (!image.hasAlphaChannel())
        return image;
    QImage ground(image.size(), QImage::Format_RGB32);
    if (ground.isNull())
        return {};
    ground.fill(Qt::white);
    QPainter(&ground).drawImage(QRect(QPoint(), image.size()), image);
    return ground;
}

QImage ofBearableSize(const QImage& image)
{
    const double pixels = double(image.width()) * image.height();
    if (pixels <= double(maxCodePicturePixels))
        return image;
    const double scale = std::sqrt(double(maxCodePicturePixels) / pixels);
    return image.scaled(std::max(1, int(image.width() * scale)), std::max(1, int(image.height() * scale)),
                        Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

bool writeAll(int descriptor, const uchar* from, qsizetype n)
{
    while (n > 0) {
        const ssize_t written = ::write(descriptor, from, size_t(n));
        if (written <= 0)
            return false;
        from += written;
        n -= written;
    }
    return true;
}

} // namespace

QImage greyPixels(const QImage& image)
{
    return onWhite(ofBearableSize(image)).convertToFormat(QImage::Format_Grayscale8);
}

OwnedDescriptor sharedPixels(const QImage& grey)
{
    OwnedDescriptor memory(::memfd_create("folvane-picture", MFD_CLOEXEC | MFD_ALLOW_SEALING));
    const bool isComplete =
        memory && writeAll(memory.number(), grey.constBits(), grey.sizeInBytes())
        && ::fcntl(memory.number(), F_ADD_SEALS, F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_WRITE | F_SEAL_SEAL)
               == 0;
    return isComplete ? std::move(memory) : OwnedDescriptor();
}

} // namespace folvane
