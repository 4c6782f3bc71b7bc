#include "pdf/PicturePages.h"

#include "pdf/DocumentWriter.h"
#include "pdf/structure/emptyDocument.h"
#include "pdf/structure/imagePage.h"

namespace folvane::pdf {

struct PicturePages::Target {
    const std::shared_ptr<QPDF> qpdf = emptyDocument();
};

PicturePages::PicturePages() : m_target(std::make_unique<Target>())
{
    QPDFObjectHandle description = QPDFObjectHandle::newDictionary();
    description.replaceKey("/Creator", QPDFObjectHandle::newString("Folvane"));
    QPDF& qpdf = *m_target->qpdf;
    qpdf.getTrailer().replaceKey("/Info", qpdf.makeIndirectObject(description));
}

PicturePages::~PicturePages() = default;

void PicturePages::add(const Picture& picture, QSizeF points)
{
    QPDF& qpdf = *m_target->qpdf;
    QPDFObjectHandle image = newJpegImage(qpdf, picture.jpeg, picture.pixels, picture.channels);
    image.getDict().replaceKey("/Interpolate", QPDFObjectHandle::newBool(true));
    addImagePage(qpdf, image, points);
}

QByteArray PicturePages::written(const QString& password, std::stop_token stop)
{
    return writtenDocument(*m_target->qpdf, PDFVersion(1, 5), password, std::move(stop));
}

} // namespace folvane::pdf
