#include "pdf/images/drawnImage.h"

#include "pdf/copying/ObjectCopier.h"
#include "pdf/drawing/PageRasteriser.h"
#include "pdf/structure/emptyDocument.h"
#include "pdf/structure/imagePage.h"
#include "platform/tasks/Cancelled.h"

namespace folvane::pdf {

namespace {

QPDFObjectHandle name(const std::string& text)
{
    return QPDFObjectHandle::newName(text);
}

QPDFObjectHandle copiedImage(QPDF& target, QPDFObjectHandle stream, const char* space,
                             const QByteArray& bytes)
{
    ObjectCopier copier(target);
    QPDFObjectHandle from = stream.getDict();
    QPDFObjectHandle image = target.newStream(bytes.toStdString());
    image.setFilterOnWrite(false);
    QPDFObjectHandle to = image.getDict();
    for (const char* key :
         {"/Width", "/Height", "/BitsPerComponent", "/ColorSpace", "/Decode", "/Filter", "/DecodeParms"}) {
        if (QPDFObjectHandle value = from.getKey(key); !value.isNull())
            to.replaceKey(key, copier.copy(value));
    }
    copier.drain();
    to.replaceKey("/Type", name("/XObject"));
    to.replaceKey("/Subtype", name("/Image"));
    if (space) {
        to.replaceKey("/ColorSpace", name(space));
        to.removeKey("/Decode");
    }
    return image;
}

bool isGrey(const QImage& image)
{
    for (int y = 0; y < image.height(); ++y) {
        const uchar* row = image.constScanLine(y);
        for (int x = 0; x < image.width(); ++x, row += 3) {
            if (row[0] != row[1] || row[0] != row[2])
                return false;
        }
    }
    return true;
}

ImageSamples samplesOf(const QImage& image, int channels)
{
    ImageSamples samples{image.size(), channels,
                         std::vector<uint8_t>(static_cast<size_t>(pixelCount(image.size()) * channels))};
    for (int y = 0; y < image.height(); ++y) {
        const uchar* from = image.constScanLine(y);
        uint8_t* to = samples.row(y);
        if (channels == 3)
            std::copy_n(from, samples.stride(), to);
        else
            for (int x = 0; x < image.width(); ++x)
                to[x] = from[3 * x];
    }
    return samples;
}

} // namespace

QByteArray documentOfImage(QPDFObjectHandle stream, QSize size, const char* space, const QByteArray& bytes,
                           const std::stop_token& stop)
{
    const std::shared_ptr<QPDF> target = emptyDocument();
    addImagePage(*target, copiedImage(*target, stream, space, bytes), size);
    throwIfStopped(stop);
    QPDFWriter writer(*target);
    writer.setOutputMemory();
    writer.setDeterministicID(true); // equal images must give equal documents: caches go by them
    writer.write();
    const std::shared_ptr<Buffer> written = writer.getBufferSharedPointer();
    return QByteArray(reinterpret_cast<const char*>(written->getBuffer()),
                      static_cast<qsizetype>(written->getSize()));
}

std::optional<ImageSamples> drawnImage(const QByteArray& document, QSize size, int channels,
                                       const std::stop_token& stop)
{
    const std::unique_ptr<PageRasteriser> page = PageRasteriser::open(document, stop);
    const QImage image = page ? page->draw(0, size, 0, stop) : QImage();
    if (image.isNull())
        return std::nullopt;
    return samplesOf(image, channels != 0 ? channels : isGrey(image) ? 1 : 3);
}

} // namespace folvane::pdf
