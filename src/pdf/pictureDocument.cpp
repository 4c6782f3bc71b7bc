#include "pdf/pictureDocument.h"

#include "pdf/drawing/PageRasteriser.h"
#include "pdf/structure/DocumentData.h"
#include "pictures/jpeg.h"
#include "pictures/pictures.h"
#include "pictures/transparency.h"

#include <array>
#include <cmath>

namespace folvane::pdf {

namespace {

constexpr int pageLongSide = 842;                  // points
constexpr int jpegQuality = 90;                    // of 100
constexpr qint64 fileLimit = 1024LL * 1024 * 1024; // read whole, once
constexpr qint64 chunk = 256 * 1024;

/// A picture as a PDF image, and the EXIF orientation with which it is to be shown.
struct PageImage {
    QPDFObjectHandle object;
    QSize pixels;
    int orientation = 1;
};

QPDFObjectHandle name(const char* text)
{
    return QPDFObjectHandle::newName(text);
}

QPDFObjectHandle imageStream(QPDF& qpdf, QSize pixels, QPDFObjectHandle colourSpace)
{
    QPDFObjectHandle image = qpdf.newStream();
    QPDFObjectHandle dictionary = image.getDict();
    dictionary.replaceKey("/Type", name("/XObject"));
    dictionary.replaceKey("/Subtype", name("/Image"));
    dictionary.replaceKey("/Width", QPDFObjectHandle::newInteger(pixels.width()));
    dictionary.replaceKey("/Height", QPDFObjectHandle::newInteger(pixels.height()));
    dictionary.replaceKey("/ColorSpace", colourSpace);
    dictionary.replaceKey("/BitsPerComponent", QPDFObjectHandle::newInteger(8));
    return image;
}

QPDFObjectHandle deviceSpace(int components)
{
    return name(components == 1 ? "/DeviceGray" : "/DeviceRGB");
}

/// The kind of colour that a profile describes stands at offset 16 of its header (ICC.1, 7.2).
bool profileFits(const QByteArray& profile, int components)
{
    return profile.size() > 128 && profile.mid(16, 4) == (components == 1 ? "GRAY" : "RGB ");
}

QPDFObjectHandle profileSpace(QPDF& qpdf, const QByteArray& profile, int components)
{
    QPDFObjectHandle stream = qpdf.newStream(profile.toStdString());
    stream.getDict().replaceKey("/N", QPDFObjectHandle::newInteger(components));
    stream.getDict().replaceKey("/Alternate", deviceSpace(components));
    return QPDFObjectHandle::newArray({name("/ICCBased"), stream});
}

bool pipeFile(const SourceFile& file, Pipeline* pipeline)
{
    std::vector<char> buffer(chunk);
    for (qint64 at = 0; at < file.size();) {
        const qint64 count = file.read(at, buffer.data(), chunk);
        if (count <= 0)
            return false;
        pipeline->write(buffer.data(), static_cast<size_t>(count));
        at += count;
    }
    pipeline->finish();
    return true;
}

/// The file's own bytes, read again whenever they are written, so that a hundred photographs do not fill the memory.
PageImage embeddedJpeg(QPDF& qpdf, std::shared_ptr<const SourceFile> file, const JpegInfo& info)
{
    const QSize pixels(info.width, info.height);
    const bool hasProfile = profileFits(info.iccProfile, info.components);
    QPDFObjectHandle image = imageStream(qpdf, pixels,
                                         hasProfile ? profileSpace(qpdf, info.iccProfile, info.components)
                                                    : deviceSpace(info.components));
    image.replaceStreamData([file](Pipeline* pipeline, bool, bool) { return pipeFile(*file, pipeline); },
                            name("/DCTDecode"), QPDFObjectHandle::newNull());
    return {image, pixels, info.orientation};
}

/// Of a picture in Format_RGBA8888. Packed row by row: unpacked it would be a quarter of the picture.
QPDFObjectHandle softMask(QPDF& qpdf, const QImage& picture, const std::stop_token& stop)
{
    Pl_Buffer packed("mask");
    Pl_Flate deflate("mask", &packed, Pl_Flate::a_deflate);
    std::vector<uchar> row(static_cast<size_t>(picture.width()));
    for (int y = 0; y < picture.height() && !stop.stop_requested(); ++y) {
        const uchar* from = picture.constScanLine(y);
        for (size_t x = 0; x < row.size(); ++x)
            row[x] = from[4 * x + 3];
        deflate.write(row.data(), row.size());
    }
    deflate.finish();
    QPDFObjectHandle mask = imageStream(qpdf, picture.size(), name("/DeviceGray"));
    mask.replaceStreamData(packed.getBufferSharedPointer(), name("/FlateDecode"),
                           QPDFObjectHandle::newNull());
    return mask;
}

/// The bytes are written from where they are.
void setJpeg(QPDFObjectHandle image, const QByteArray& jpeg)
{
    const auto give = [jpeg](Pipeline* pipeline) {
        pipeline->write(reinterpret_cast<const unsigned char*>(jpeg.constData()),
                        static_cast<size_t>(jpeg.size()));
        pipeline->finish();
    };
    image.replaceStreamData(give, name("/DCTDecode"), QPDFObjectHandle::newNull());
}

std::optional<PageImage> encodedPicture(QPDF& qpdf, Picture picture, const std::stop_token& stop)
{
    QPDFObjectHandle mask = QPDFObjectHandle::newNull();
    if (picture.hasAlpha) {
        mask = softMask(qpdf, picture.image, stop);
        picture.image = withoutTransparency(std::move(picture.image), stop);
    }
    const QByteArray jpeg = encodeJpeg(picture.image, jpegQuality, stop);
    if (jpeg.isEmpty())
        return std::nullopt;
    const bool isGrey = picture.image.format() == QImage::Format_Grayscale8;
    QPDFObjectHandle image = imageStream(qpdf, picture.image.size(), deviceSpace(isGrey ? 1 : 3));
    setJpeg(image, jpeg);
    if (picture.hasAlpha)
        image.getDict().replaceKey("/SMask", mask);
    return PageImage{image, picture.image.size(), picture.orientation};
}

std::optional<PageImage> pageImage(QPDF& qpdf, std::shared_ptr<const SourceFile> file,
                                   const QString& extension, const std::stop_token& stop)
{
    QByteArray bytes = file->readAll(fileLimit);
    if (bytes.isEmpty())
        return std::nullopt;
    const std::optional<JpegInfo> info = inspectJpeg(bytes);
    // A header alone does not make a picture: it must decode, if only at an eighth.
    if (info && info->isRgbOrGrey && decodeJpeg(bytes, 1, stop))
        return embeddedJpeg(qpdf, std::move(file), *info);
    std::optional<Picture> picture = decodePicture({std::move(bytes), std::move(file)}, extension, stop);
    return picture ? encodedPicture(qpdf, std::move(*picture), stop) : std::nullopt;
}

/// The unit square of the image laid on a page of `w` by `h` as an EXIF orientation wants it (its row 0 is at the top).
std::string placement(int orientation, QSize page)
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
    const auto number = [](int factor, int side) { return std::to_string(factor * side) + ' '; };
    return "q " + number(m.a, page.width()) + number(m.b, page.height()) + number(m.c, page.width())
           + number(m.d, page.height()) + number(m.e, page.width()) + number(m.f, page.height())
           + "cm /Im0 Do Q";
}

QPDFObjectHandle picturePage(QPDF& qpdf, const PageImage& image)
{
    const bool sideways = image.orientation >= 5;
    const QSize page = picturePageSize(sideways ? image.pixels.transposed() : image.pixels);
    QPDFObjectHandle objects = QPDFObjectHandle::newDictionary();
    objects.replaceKey("/Im0", image.object);
    QPDFObjectHandle resources = QPDFObjectHandle::newDictionary();
    resources.replaceKey("/XObject", objects);
    QPDFObjectHandle dictionary = QPDFObjectHandle::newDictionary();
    dictionary.replaceKey("/Type", name("/Page"));
    dictionary.replaceKey("/MediaBox", QPDFObjectHandle::newArray(
                                           QPDFObjectHandle::Rectangle(0, 0, page.width(), page.height())));
    dictionary.replaceKey("/Resources", resources);
    dictionary.replaceKey("/Contents", qpdf.newStream(placement(image.orientation, page)));
    return qpdf.makeIndirectObject(dictionary);
}

} // namespace

QSize picturePageSize(QSize pixels)
{
    const double scale = double(pageLongSide) / std::max(pixels.width(), pixels.height());
    const auto points = [scale](int side) { return std::max(1, static_cast<int>(std::round(side * scale))); };
    return {points(pixels.width()), points(pixels.height())};
}

std::unique_ptr<Document> pictureDocument(std::shared_ptr<const SourceFile> file, const QString& extension,
                                          const std::stop_token& stop)
{
    const std::shared_ptr<QPDF> qpdf = QPDF::create();
    qpdf->emptyPDF();
    qpdf->setSuppressWarnings(true);
    const std::optional<PageImage> image = pageImage(*qpdf, file, extension, stop);
    if (!image)
        return nullptr;
    qpdf->addPage(picturePage(*qpdf, *image), false);
    std::unique_ptr<DocumentData> data = documentData(qpdf);
    data->file = std::move(file);
    return std::make_unique<Document>(std::move(data));
}

} // namespace folvane::pdf
