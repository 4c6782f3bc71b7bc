#include "pdf/structure/imagePage.h"

#include <array>

namespace folvane::pdf {

namespace {

std::string number(double value)
{
    return QUtil::double_to_string(value, 5);
}

/// The unit square of the image laid on a page as an EXIF orientation wants it (its row 0 is at the top).
std::string placement(int orientation, QSizeF page)
{
    struct Matrix {
        int a, b, c, d, e, f; // in units of the page's width (a, c, e) and height (b, d, f)
    };
    constexpr std::array<Matrix, 8> matrices{{{1, 0, 0, 1, 0, 0},
                                              {-1, 0, 0, 1, 1, 0},
                                              {-1, 0, 0, -1, 1, 1},
                                              {1, 0, 0, -1, 0, 1},
                                              {0, -1, -1, 0, 1, 1},
                                              {0, -1, 1, 0, 0, 1},
                                              {0, 1, 1, 0, 0, 0},
                                              {0, 1, -1, 0, 1, 0}}};
    const Matrix& m = matrices[static_cast<size_t>(orientation - 1)];
    const auto times = [](int factor, double side) { return number(factor * side) + ' '; };
    return times(m.a, page.width()) + times(m.b, page.height()) + times(m.c, page.width())
           + times(m.d, page.height()) + times(m.e, page.width()) + times(m.f, page.height());
}

} // namespace

QPDFObjectHandle newImage(QPDF& document, QSize pixels, QPDFObjectHandle colourSpace)
{
    QPDFObjectHandle image = document.newStream();
    QPDFObjectHandle dictionary = image.getDict();
    dictionary.replaceKey("/Type", QPDFObjectHandle::newName("/XObject"));
    dictionary.replaceKey("/Subtype", QPDFObjectHandle::newName("/Image"));
    dictionary.replaceKey("/Width", QPDFObjectHandle::newInteger(pixels.width()));
    dictionary.replaceKey("/Height", QPDFObjectHandle::newInteger(pixels.height()));
    dictionary.replaceKey("/ColorSpace", colourSpace);
    dictionary.replaceKey("/BitsPerComponent", QPDFObjectHandle::newInteger(8));
    return image;
}

QPDFObjectHandle newJpegImage(QPDF& document, const QByteArray& jpeg, QSize pixels, int channels)
{
    QPDFObjectHandle image = newImage(document, pixels, deviceSpace(channels));
    const auto give = [jpeg](Pipeline* pipeline) {
        pipeline->write(reinterpret_cast<const unsigned char*>(jpeg.constData()),
                        static_cast<size_t>(jpeg.size()));
        pipeline->finish();
    };
    image.replaceStreamData(give, QPDFObjectHandle::newName("/DCTDecode"), QPDFObjectHandle::newNull());
    return image;
}

QPDFObjectHandle deviceSpace(int channels)
{
    return QPDFObjectHandle::newName(channels == 1 ? "/DeviceGray" : "/DeviceRGB");
}

void addImagePage(QPDF& document, QPDFObjectHandle image, QSizeF points, int orientation)
{
    QPDFObjectHandle page =
        QPDFObjectHandle::parse("<< /Type /Page /Resources << /XObject << >> >> /MediaBox [0 0 "
                                + number(points.width()) + " " + number(points.height()) + "] >>");
    page.getKey("/Resources").getKey("/XObject").replaceKey("/Im0", image);
    page.replaceKey("/Contents", document.newStream("q " + placement(orientation, points) + "cm /Im0 Do Q"));
    document.addPage(document.makeIndirectObject(page), false);
}

} // namespace folvane::pdf
