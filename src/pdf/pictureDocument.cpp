#include "pdf/pictureDocument.h"

#include "pdf/structure/DocumentData.h"
#include "pdf/structure/emptyDocument.h"
#include "pdf/structure/imagePage.h"
#include "pictures/fillHoles.h"
#include "pictures/jpeg.h"
#include "pictures/jpegEncoding.h"
#include "pictures/pictures.h"

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
    QPDFObjectHandle image = newImage(qpdf, pixels,
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
    QPDFObjectHandle mask = newImage(qpdf, picture.size(), name("/DeviceGray"));
    mask.replaceStreamData(packed.getBufferSharedPointer(), name("/FlateDecode"),
                           QPDFObjectHandle::newNull());
    return mask;
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
    QPDFObjectHandle image = newJpegImage(qpdf, jpeg, picture.image.size(), isGrey ? 1 : 3);
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

QSize pageSize(const PageImage& image)
{
    const bool isSideways = image.orientation >= 5;
    return picturePageSize(isSideways ? image.pixels.transposed() : image.pixels);
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
    const std::shared_ptr<QPDF> qpdf = emptyDocument();
    const std::optional<PageImage> image = pageImage(*qpdf, file, extension, stop);
    if (!image)
        return nullptr;
    addImagePage(*qpdf, image->object, pageSize(*image), image->orientation);
    std::unique_ptr<DocumentData> data = documentData(qpdf);
    data->file = std::move(file);
    return std::make_unique<Document>(std::move(data));
}

} // namespace folvane::pdf
