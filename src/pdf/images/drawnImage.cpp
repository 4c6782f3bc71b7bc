#include "pdf/images/drawnImage.h"

#include "pdf/copying/ObjectCopier.h"
#include "pdf/drawing/PageRasteriser.h"
#include "pdf/structure/emptyDocument.h"
#include "pdf/structure/imagePage.h"
#include "pictures/samplesOf.h"
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
    return samplesOf(image, channels != 0 ? std::optional(channels) : std::nullopt);
}

} // namespace folvane::pdf
