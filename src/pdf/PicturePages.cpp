#include "pdf/PicturePages.h"

#include "pdf/DocumentWriter.h"

namespace folvane::pdf {

namespace {

QPDFObjectHandle name(const char* text)
{
    return QPDFObjectHandle::newName(text);
}

std::string number(double value)
{
    return QUtil::double_to_string(value, 5);
}

QPDFObjectHandle imageStream(QPDF& qpdf, const PicturePages::Picture& picture)
{
    QPDFObjectHandle image = qpdf.newStream();
    QPDFObjectHandle dictionary = image.getDict();
    dictionary.replaceKey("/Type", name("/XObject"));
    dictionary.replaceKey("/Subtype", name("/Image"));
    dictionary.replaceKey("/Width", QPDFObjectHandle::newInteger(picture.pixels.width()));
    dictionary.replaceKey("/Height", QPDFObjectHandle::newInteger(picture.pixels.height()));
    dictionary.replaceKey("/ColorSpace", name(picture.channels == 1 ? "/DeviceGray" : "/DeviceRGB"));
    dictionary.replaceKey("/BitsPerComponent", QPDFObjectHandle::newInteger(8));
    dictionary.replaceKey("/Interpolate", QPDFObjectHandle::newBool(true));
    image.replaceStreamData(picture.jpeg.toStdString(), name("/DCTDecode"), QPDFObjectHandle::newNull());
    return image;
}

} // namespace

struct PicturePages::Target {
    QPDF qpdf;
};

PicturePages::PicturePages() : m_target(std::make_unique<Target>())
{
    m_target->qpdf.emptyPDF();
    QPDFObjectHandle description = QPDFObjectHandle::newDictionary();
    description.replaceKey("/Creator", QPDFObjectHandle::newString("Folvane"));
    m_target->qpdf.getTrailer().replaceKey("/Info", m_target->qpdf.makeIndirectObject(description));
}

PicturePages::~PicturePages() = default;

void PicturePages::add(const Picture& picture, QSizeF points)
{
    const std::string width = number(points.width()), height = number(points.height());
    QPDFObjectHandle page = QPDFObjectHandle::parse(
        "<< /Type /Page /Resources << /XObject << >> >> /MediaBox [0 0 " + width + " " + height + "] >>");
    page.getKey("/Resources").getKey("/XObject").replaceKey("/Im0", imageStream(m_target->qpdf, picture));
    page.replaceKey("/Contents", m_target->qpdf.newStream(width + " 0 0 " + height + " 0 0 cm /Im0 Do"));
    m_target->qpdf.addPage(m_target->qpdf.makeIndirectObject(page), false);
}

QByteArray PicturePages::written(const QString& password, std::stop_token stop)
{
    return writtenDocument(m_target->qpdf, PDFVersion(1, 5), password, std::move(stop));
}

} // namespace folvane::pdf
