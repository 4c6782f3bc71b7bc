#include "pdf/Assembly.h"

#include "pdf/Document.h"
#include "pdf/images/ImageCache.h"
#include "pdf/madeImages.h"
#include "pictures/MemoryBudget.h"
#include "pictures/jpegSamples.h"
#include "platform/tasks/Cancelled.h"
#include "support/madePdf.h"
#include "support/similarity.h"
#include "support/tools.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <thread>

namespace folvane::pdf {
namespace {

const QSize photo(480, 320);
const QSize shown(240, 160); // points of the page, and pixels in which it is compared
const CompressionStep step{240, 0.55, false};
const std::string samplesFolder = FOLVANE_TEST_SAMPLES;

/// Object 6 and what it refers to, from 7 on.
using Objects = QList<QByteArray>;

/// A page with text on which the image lies, leaving a margin of blue.
QByteArray documentWith(const Objects& objects)
{
    return pdfOfObjects(
        Objects{"<< /Type /Catalog /Pages 2 0 R >>", "<< /Type /Pages /Kids [3 0 R] /Count 1 >>",
                "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 240 160] /Contents 4 0 R /Resources << /XObject "
                "<< /Im0 6 0 R >> /Font << /F1 5 0 R >> >> >>",
                pdfStream({}, "0.2 0.4 0.8 rg 0 0 240 160 re f q 220 0 0 140 10 10 cm /Im0 Do Q "
                              "BT /F1 8 Tf 20 2 Td (Words remain) Tj ET"),
                "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>"}
        + objects);
}

QByteArray image(const QByteArray& entries, const QByteArray& data, QSize size = photo)
{
    return pdfStream("/Type /XObject /Subtype /Image /Width " + QByteArray::number(size.width()) + " /Height "
                         + QByteArray::number(size.height()) + " " + entries,
                     data);
}

QByteArray built(const QByteArray& file, const std::optional<CompressionStep>& quality,
                 std::shared_ptr<ImageCache> cache = std::make_shared<ImageCache>())
{
    const std::unique_ptr<Document> document = Document::fromBytes(file);
    if (!document)
        return {};
    std::vector<PageCopy> pages;
    for (int i = 0; i < document->pageCount(); ++i)
        pages.push_back({document.get(), i, 0});
    Assembly assembly(pages, {});
    if (quality)
        assembly.recodeImages(*quality, std::move(cache), {});
    return assembly.written({}, {});
}

/// A file on disk, as two renderers and two other tools see it.
class Outside {
public:
    explicit Outside(const QByteArray& file)
    {
        QFile to(path());
        if (!to.open(QIODevice::WriteOnly) || to.write(file) != file.size())
            throw std::runtime_error("the file cannot be written");
    }
    QString path() const { return m_folder.filePath("file.pdf"); }
    QImage byPoppler() const
    {
        runTool("pdftocairo", {"-png", "-singlefile", "-r", "72", path(), m_folder.filePath("page")});
        return QImage(m_folder.filePath("page.png"));
    }
    QImage byMutool() const
    {
        runTool("mutool", {"draw", "-q", "-r", "72", "-o", m_folder.filePath("mupdf.png"), path()});
        return QImage(m_folder.filePath("mupdf.png"));
    }
    /// What pdfimages lists: a row an image, its words the columns.
    QStringList images() const
    {
        const QString list = QString::fromUtf8(runTool("pdfimages", {"-list", path()}).output);
        return list.split('\n', Qt::SkipEmptyParts).mid(2);
    }

private:
    QTemporaryDir m_folder;
};

QImage drawn(const QByteArray& file)
{
    const std::unique_ptr<Document> document = Document::fromBytes(file);
    return document ? document->draw(0, shown, 0, {}) : QImage();
}

enum class Fate { Recoded, Stays };

constexpr int notJudged = 256; // mutool draws pictures in Lab in false colours, to begin with

struct KindCase {
    const char* name;
    Objects (*objects)();
    Fate fate = Fate::Recoded;
    int otherRenderer =
        9; ///< how far mutool's colours may move: it knows no profiles and mixes inks by subtraction
    double similarity = 0.85; ///< at least; dithered bitmaps lose the pattern that they consist of
};

void PrintTo(const KindCase& row, std::ostream* out)
{
    *out << row.name;
}

class ImageKinds : public testing::TestWithParam<KindCase> {};

TEST_P(ImageKinds, LookTheSameAndTakeNoMore)
{
    const KindCase row = GetParam();
    const QByteArray file = documentWith(row.objects());
    const QByteArray before = built(file, {}), after = built(file, step);
    ASSERT_FALSE(before.isEmpty());
    const Outside was(before), is(after);

    if (faultsOf(was.path()).isEmpty())
        EXPECT_EQ(faultsOf(is.path()).toStdString(), "");
    EXPECT_EQ(textOf(is.path()), textOf(was.path()));
    if (row.fate == Fate::Recoded) {
        EXPECT_LT(after.size(), before.size());
        EXPECT_NE(is.images(), was.images());
    } else {
        EXPECT_LE(after.size(), before.size());
        EXPECT_EQ(is.images(), was.images());
    }
    EXPECT_GT(similarity(drawn(before), drawn(after)), row.similarity);
    EXPECT_LT(largestCellDifference(drawn(before), drawn(after)), 8);
    EXPECT_LT(largestCellDifference(was.byPoppler(), is.byPoppler()), 9);
    EXPECT_LT(largestCellDifference(was.byMutool(), is.byMutool()), row.otherRenderer);
}

QByteArray flate(const QByteArray& entries, const QByteArray& samples, QSize size = photo)
{
    return image(entries + " /Filter /FlateDecode", deflatedBytes(samples), size);
}

QByteArray flateOf(int channels, int bits, const QByteArray& space)
{
    return flate("/ColorSpace " + space + " /BitsPerComponent " + QByteArray::number(bits),
                 packedPhoto(photo, channels, bits));
}

QByteArray dct(const QByteArray& space, const QByteArray& jpeg, const QByteArray& more = {})
{
    return image("/BitsPerComponent 8 /Filter /DCTDecode /ColorSpace " + space + " " + more, jpeg);
}

const QByteArray calRgb =
    "[/CalRGB << /WhitePoint [0.95 1 1.09] /Gamma [1.8 1.8 1.8] /Matrix [0.41 0.21 0.02 0.36 "
    "0.72 0.12 0.18 0.07 0.95] >>]";
const QByteArray lab = "[/Lab << /WhitePoint [0.96 1 0.82] /Range [-40 40 -40 40] >>]";

/// 16 colours in hexadecimal digits, from one end to the other, that are no grey ramp.
QByteArray palette(int channels)
{
    QByteArray bytes;
    for (int i = 0; i < 16; ++i) {
        for (const int sample : QList<int>{60 + i * 12, 220 - i * 8, i * i / 2 + 60, 20}.first(channels))
            bytes.append(char(sample));
    }
    return "<" + bytes.toHex() + ">";
}

const QByteArray tint = "<< /FunctionType 2 /Domain [0 1] /N 1 /C0 [0 0 0 0] /C1 [0.1 0.9 0.6 0] >>";

std::vector<uint8_t> toVector(const QByteArray& bytes)
{
    return {bytes.begin(), bytes.end()};
}

QByteArray sampleFile(const char* name)
{
    QFile file(QString::fromStdString(samplesFolder) + "/" + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Left half seen, a soft edge, right half not.
QByteArray halfMask(QSize size)
{
    QByteArray mask;
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x)
            mask.append(char(std::clamp(128 + (size.width() / 2 - x) * 8 + y % 3, 0, 255)));
    }
    return mask;
}

/// Black where the mask hides it, as many programs write it.
QByteArray blackenedPhoto(const QByteArray& mask)
{
    QByteArray samples = madePhoto(photo, 3);
    for (qsizetype i = 0; i < mask.size(); ++i) {
        if (mask[i] == 0)
            samples.replace(3 * i, 3, QByteArray(3, '\0'));
    }
    return samples;
}

QByteArray stencil(QSize size)
{
    QByteArray rows;
    for (int y = 0; y < size.height(); ++y)
        rows += QByteArray(size.width() / 16, '\0') + QByteArray(size.width() / 16, '\xff');
    return rows;
}

INSTANTIATE_TEST_SUITE_P(
    Samples, ImageKinds,
    testing::Values(
        KindCase{"Grey8", [] { return Objects{flateOf(1, 8, "/DeviceGray")}; }},
        KindCase{"Grey1Dithered", [] { return Objects{flateOf(1, 1, "/DeviceGray")}; }, Fate::Recoded, 9,
                 0.3},
        KindCase{"Grey2", [] { return Objects{flateOf(1, 2, "/DeviceGray")}; }},
        KindCase{"Grey4", [] { return Objects{flateOf(1, 4, "/DeviceGray")}; }},
        KindCase{"Grey16", [] { return Objects{flateOf(1, 16, "/DeviceGray")}; }},
        KindCase{"Rgb8", [] { return Objects{flateOf(3, 8, "/DeviceRGB")}; }},
        KindCase{"Rgb4", [] { return Objects{flateOf(3, 4, "/DeviceRGB")}; }},
        KindCase{"Rgb16", [] { return Objects{flateOf(3, 16, "/DeviceRGB")}; }},
        KindCase{"Cmyk8", [] { return Objects{flateOf(4, 8, "/DeviceCMYK")}; }},
        KindCase{
            "CalGrey",
            [] { return Objects{flateOf(1, 8, "[/CalGray << /WhitePoint [0.95 1 1.09] /Gamma 1.8 >>]")}; }},
        KindCase{"CalRgb", [] { return Objects{flateOf(3, 8, calRgb)}; }},
        KindCase{"IccRgb",
                 [] {
                     return Objects{flateOf(3, 8, "[/ICCBased 7 0 R]"),
                                    pdfStream("/N 3 /Alternate /DeviceRGB", "no profile")};
                 }},
        KindCase{"IccCmyk",
                 [] {
                     return Objects{flateOf(4, 8, "[/ICCBased 7 0 R]"),
                                    pdfStream("/N 4 /Alternate /DeviceCMYK", "no profile")};
                 }},
        KindCase{"Lab", [] { return Objects{flateOf(3, 8, lab)}; }, Fate::Recoded, notJudged},
        KindCase{"Indexed4",
                 [] { return Objects{flateOf(1, 4, "[/Indexed /DeviceRGB 15 " + palette(3) + "]")}; }},
        KindCase{"IndexedPaletteInAStream",
                 [] {
                     return Objects{
                         flateOf(1, 4, "[/Indexed /DeviceRGB 15 7 0 R]"),
                         pdfStream("/Filter /FlateDecode", deflatedBytes(QByteArray::fromHex(palette(3))))};
                 }},
        KindCase{"IndexedCmykBackwards", // each sample counts from the palette's end
                 [] {
                     return Objects{flate("/ColorSpace [/Indexed /DeviceCMYK 15 " + palette(4)
                                              + "] /BitsPerComponent 4 /Decode [15 0]",
                                          packedPhoto(photo, 1, 4))};
                 }},
        KindCase{"IndexedLab",
                 [] { return Objects{flateOf(1, 4, "[/Indexed " + lab + " 15 " + palette(3) + "]")}; },
                 Fate::Recoded, notJudged},
        KindCase{"Separation",
                 [] { return Objects{flateOf(1, 8, "[/Separation /Spot /DeviceCMYK 7 0 R]"), tint}; }},
        KindCase{"DeviceN",
                 [] {
                     return Objects{flateOf(2, 8, "[/DeviceN [/Spot /Other] /DeviceRGB 7 0 R]"),
                                    pdfStream("/FunctionType 4 /Domain [0 1 0 1] /Range [0 1 0 1 0 1]",
                                              "{ 1 exch sub exch 1 exch sub dup 3 1 roll }")};
                 }},
        KindCase{"GreyBackwards",
                 [] {
                     return Objects{flate("/ColorSpace /DeviceGray /BitsPerComponent 8 /Decode [1 0]",
                                          madePhoto(photo, 1))};
                 }},
        KindCase{"RgbStretched",
                 [] {
                     return Objects{
                         flate("/ColorSpace /DeviceRGB /BitsPerComponent 4 /Decode [0.2 0.8 1 0 0 0.5]",
                               packedPhoto(photo, 3, 4))};
                 }}),
    [](const auto& row) { return std::string(row.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Codings, ImageKinds,
    testing::Values(
        KindCase{
            "Uncompressed",
            [] { return Objects{image("/ColorSpace /DeviceRGB /BitsPerComponent 8", madePhoto(photo, 3))}; }},
        KindCase{"Lzw",
                 [] {
                     return Objects{image("/ColorSpace /DeviceRGB /BitsPerComponent 8 /Filter /LZWDecode",
                                          lzwBytes(madePhoto(photo, 3)))};
                 }},
        KindCase{"RunLength",
                 [] {
                     return Objects{
                         image("/ColorSpace /DeviceRGB /BitsPerComponent 8 /Filter [/RunLengthDecode]",
                               runLengthBytes(madePhoto(photo, 3)))};
                 }},
        KindCase{"HexOfFlate",
                 [] {
                     return Objects{image(
                         "/ColorSpace /DeviceRGB /BitsPerComponent 8 /Filter [/ASCIIHexDecode /FlateDecode]",
                         hexBytes(deflatedBytes(madePhoto(photo, 3))))};
                 }},
        KindCase{"FlateOfJpeg",
                 [] {
                     return Objects{
                         image("/ColorSpace /DeviceRGB /BitsPerComponent 8 /Filter [/FlateDecode /DCTDecode]",
                               deflatedBytes(jpegBytes(madePhoto(photo, 3), photo, 3)))};
                 }},
        KindCase{"JpegGrey",
                 [] { return Objects{dct("/DeviceGray", jpegBytes(madePhoto(photo, 1), photo, 1))}; }},
        KindCase{"JpegRgb",
                 [] { return Objects{dct("/DeviceRGB", jpegBytes(madePhoto(photo, 3), photo, 3))}; }},
        KindCase{"JpegRgbUntransformed",
                 [] {
                     return Objects{dct("/DeviceRGB", plainRgbJpeg(madePhoto(photo, 3), photo),
                                        "/DecodeParms << /ColorTransform 0 >>")};
                 }},
        KindCase{"JpegCmyk",
                 [] { return Objects{dct("/DeviceCMYK", jpegBytes(madePhoto(photo, 4), photo, 4))}; }},
        KindCase{"JpegCmykInverted",
                 [] {
                     return Objects{
                         dct("/DeviceCMYK",
                             jpegBytes(invertedBytes(madePhoto(photo, 4)), photo, 4, InkMarker::Set),
                             "/Decode [1 0 1 0 1 0 1 0]")};
                 }},
        KindCase{"JpegYcckInverted",
                 [] {
                     return Objects{dct("/DeviceCMYK", ycckJpeg(invertedBytes(madePhoto(photo, 4)), photo),
                                        "/Decode [1 0 1 0 1 0 1 0]")};
                 }},
        KindCase{"JpegYcck",
                 [] { return Objects{dct("/DeviceCMYK", ycckJpeg(madePhoto(photo, 4), photo))}; }},
        KindCase{"JpegLab", [] { return Objects{dct(lab, jpegBytes(madePhoto(photo, 3), photo, 3))}; },
                 Fate::Recoded, notJudged},
        KindCase{"Group4",
                 [] {
                     return Objects{
                         image("/ColorSpace /DeviceGray /BitsPerComponent 1 /Filter /CCITTFaxDecode "
                               "/DecodeParms << /K -1 /Columns 480 /Rows 320 >>",
                               group4Bytes(packedPhoto(photo, 1, 1), photo))};
                 },
                 Fate::Recoded, 9, 0.3},
        KindCase{"Group4Coloured",
                 [] {
                     return Objects{
                         image("/ColorSpace [/Indexed /DeviceRGB 1 <ff8000 004080>] /BitsPerComponent 1 "
                               "/Filter /CCITTFaxDecode /DecodeParms << /K -1 /Columns 480 /Rows 320 >>",
                               group4Bytes(packedPhoto(photo, 1, 1), photo))};
                 },
                 Fate::Recoded, 9, 0.3},
        KindCase{"Jbig2",
                 [] {
                     return Objects{image("/ColorSpace /DeviceGray /BitsPerComponent 1 /Filter /JBIG2Decode",
                                          jbig2Bytes(packedPhoto(photo, 1, 1), photo))};
                 },
                 Fate::Recoded, 9, 0.3},
        KindCase{"JpxColour",
                 [] {
                     return Objects{image("/ColorSpace /DeviceRGB /BitsPerComponent 8 /Filter /JPXDecode",
                                          sampleFile("colour.jp2"), QSize(160, 120))};
                 }},
        KindCase{
            "JpxWithoutSpace",
            [] { return Objects{image("/Filter /JPXDecode", sampleFile("colour.jp2"), QSize(160, 120))}; }},
        KindCase{"JpxGrey",
                 [] {
                     return Objects{image("/ColorSpace /DeviceGray /Filter /JPXDecode",
                                          sampleFile("grey.jp2"), QSize(160, 120))};
                 }},
        KindCase{"JpxOfColourNumbers",
                 [] {
                     return Objects{
                         image("/ColorSpace [/Separation /Spot /DeviceCMYK 7 0 R] /Filter /JPXDecode",
                               sampleFile("grey.jp2"), QSize(160, 120)),
                         tint};
                 }}),
    [](const auto& row) { return std::string(row.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Masks, ImageKinds,
    testing::Values(
        KindCase{"SoftMask",
                 [] {
                     return Objects{flate("/ColorSpace /DeviceRGB /BitsPerComponent 8 /SMask 7 0 R",
                                          blackenedPhoto(halfMask(photo))),
                                    flate("/ColorSpace /DeviceGray /BitsPerComponent 8", halfMask(photo))};
                 }},
        KindCase{"SoftMaskOfAnotherSize",
                 [] {
                     const QSize small(96, 64);
                     return Objects{flate("/ColorSpace /DeviceRGB /BitsPerComponent 8 /SMask 7 0 R",
                                          blackenedPhoto(halfMask(photo))),
                                    flate("/ColorSpace /DeviceGray /BitsPerComponent 8 /Decode [1 0]",
                                          invertedBytes(halfMask(small)), small)};
                 }},
        KindCase{"Stencilled",
                 [] {
                     return Objects{
                         flate("/ColorSpace /DeviceRGB /BitsPerComponent 8 /Mask 7 0 R", madePhoto(photo, 3)),
                         flate("/ImageMask true /BitsPerComponent 1", stencil(photo))};
                 }},
        KindCase{"JpegWithSoftMask",
                 [] {
                     return Objects{
                         dct("/DeviceRGB", jpegBytes(madePhoto(photo, 3), photo, 3), "/SMask 7 0 R"),
                         flate("/ColorSpace /DeviceGray /BitsPerComponent 8", halfMask(photo))};
                 }},
        KindCase{
            "ItselfAStencil",
            [] { return Objects{flate("/ImageMask true /BitsPerComponent 1", packedPhoto(photo, 1, 1))}; },
            Fate::Stays},
        KindCase{"ColourKey",
                 [] {
                     return Objects{
                         flate("/ColorSpace /DeviceRGB /BitsPerComponent 8 /Mask [0 90 0 255 0 255]",
                               madePhoto(photo, 3))};
                 },
                 Fate::Stays},
        KindCase{"Matte",
                 [] {
                     return Objects{flate("/ColorSpace /DeviceRGB /BitsPerComponent 8 /SMask 7 0 R",
                                          blackenedPhoto(halfMask(photo))),
                                    flate("/ColorSpace /DeviceGray /BitsPerComponent 8 /Matte [0 0 0]",
                                          halfMask(photo))};
                 },
                 Fate::Stays}),
    [](const auto& row) { return std::string(row.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Hopeless, ImageKinds,
    testing::Values(
        KindCase{"JpegOfPoorerQuality",
                 [] {
                     return Objects{
                         dct("/DeviceGray", encodedJpeg({photo, 1, toVector(madePhoto(photo, 1))}, 3, {}))};
                 },
                 Fate::Stays},
        KindCase{"FlatColourThatTheWriterDeflates",
                 [] {
                     return Objects{
                         image("/ColorSpace /DeviceRGB /BitsPerComponent 8", QByteArray(480 * 320 * 3, 'b'))};
                 },
                 Fate::Stays},
        KindCase{"TooFewRows",
                 [] {
                     return Objects{flate("/ColorSpace /DeviceRGB /BitsPerComponent 8",
                                          madePhoto(photo, 3).left(480 * 3 * 200))};
                 },
                 Fate::Stays},
        KindCase{
            "JpegCutShort",
            [] { return Objects{dct("/DeviceRGB", jpegBytes(madePhoto(photo, 3), photo, 3).left(20000))}; },
            Fate::Stays},
        KindCase{"JpegOfOtherChannels",
                 [] { return Objects{dct("/DeviceRGB", jpegBytes(madePhoto(photo, 1), photo, 1))}; },
                 Fate::Stays},
        KindCase{"PaletteOnItself",
                 [] { return Objects{flateOf(1, 4, "7 0 R"), "[/Indexed 7 0 R 15 <00>]"}; }, Fate::Stays}),
    [](const auto& row) { return std::string(row.param.name); });

QByteArray photoImage()
{
    return flateOf(3, 8, "/DeviceRGB");
}

/// Where an image can stand: object 6 is the image in each.
struct PlaceCase {
    const char* name;
    QByteArray pageEntries;
    QByteArray content;
    Objects more; ///< from object 7 on
};

void PrintTo(const PlaceCase& row, std::ostream* out)
{
    *out << row.name;
}

class ImagePlaces : public testing::TestWithParam<PlaceCase> {};

TEST_P(ImagePlaces, AreAllFound)
{
    const PlaceCase row = GetParam();
    const QByteArray file =
        pdfOfObjects(Objects{"<< /Type /Catalog /Pages 2 0 R >>", "<< /Type /Pages /Kids [3 0 R] /Count 1 >>",
                             "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 240 160] /Contents 4 0 R "
                                 + row.pageEntries + " >>",
                             pdfStream({}, row.content), "<< /XObject << /Im0 6 0 R >> >>", photoImage()}
                     + row.more);
    const QByteArray before = built(file, {}), after = built(file, step);
    EXPECT_LT(after.size(), before.size() / 4);
    EXPECT_LT(largestCellDifference(drawn(before), drawn(after)), 8);
    EXPECT_LT(largestCellDifference(Outside(before).byMutool(), Outside(after).byMutool()), 9);
}

QByteArray inlined(const QByteArray& entries, int channels)
{
    return "q 240 0 0 160 0 0 cm BI " + entries + " ID " + deflatedBytes(madePhoto(photo, channels))
           + " EI Q";
}

const QByteArray wholePage = "240 0 0 160 0 0 cm /Im0 Do";

INSTANTIATE_TEST_SUITE_P(
    Rows, ImagePlaces,
    testing::Values(
        PlaceCase{"Page", "/Resources 5 0 R", wholePage, {}},
        PlaceCase{"InTheContentItself", "", inlined("/W 480 /H 320 /BPC 8 /CS /RGB /F /Fl", 3), {}},
        PlaceCase{"InTheContentOfAForm",
                  "/Resources << /XObject << /Fm0 7 0 R >> >>",
                  "/Fm0 Do",
                  {pdfStream("/Type /XObject /Subtype /Form /BBox [0 0 240 160] /Resources << >>",
                             inlined("/W 480 /H 320 /BPC 8 /CS /G /F /Fl", 1))}},
        PlaceCase{
            "FormInAForm",
            "/Resources << /XObject << /Fm0 7 0 R >> >>",
            "/Fm0 Do",
            {pdfStream("/Type /XObject /Subtype /Form /BBox [0 0 240 160] /Resources << /XObject << /Fm1 8 0 "
                       "R >> >>",
                       "/Fm1 Do"),
             pdfStream("/Type /XObject /Subtype /Form /BBox [0 0 240 160] /Resources 5 0 R", wholePage)}},
        PlaceCase{
            "Pattern",
            "/Resources << /Pattern << /P0 7 0 R >> >>",
            "/Pattern cs /P0 scn 0 0 240 160 re f",
            {pdfStream(
                "/Type /Pattern /PatternType 1 /PaintType 1 /TilingType 1 /BBox [0 0 240 160] /XStep 240 "
                "/YStep 160 /Resources 5 0 R",
                wholePage)}},
        PlaceCase{
            "Annotation",
            "/Annots [<< /Type /Annot /Subtype /Stamp /F 4 /Rect [0 0 240 160] /AP << /N 7 0 R >> >>]",
            "",
            {pdfStream("/Type /XObject /Subtype /Form /BBox [0 0 240 160] /Resources 5 0 R", wholePage)}},
        PlaceCase{
            "Glyph",
            "/Resources << /Font << /F0 7 0 R >> >>",
            "BT /F0 160 Tf 0 0 Td (a) Tj ET",
            {"<< /Type /Font /Subtype /Type3 /FontBBox [0 0 1500 1000] /FontMatrix [0.001 0 0 0.001 0 0] "
             "/CharProcs << /a 8 0 R >> /Encoding << /Type /Encoding /Differences [97 /a] >> /FirstChar 97 "
             "/LastChar 97 /Widths [1500] /Resources 5 0 R >>",
             pdfStream({}, "1500 0 d0 1500 0 0 1000 0 0 cm /Im0 Do")}},
        PlaceCase{
            "MaskingGroup",
            "/Resources << /ExtGState << /G0 << /SMask << /S /Luminosity /G 7 0 R >> >> >> >>",
            "/G0 gs 1 0 0 rg 0 0 240 160 re f",
            {pdfStream("/Type /XObject /Subtype /Form /BBox [0 0 240 160] /Group << /S /Transparency /CS "
                       "/DeviceRGB >> /Resources 5 0 R",
                       wholePage)}}),
    [](const auto& row) { return std::string(row.param.name); });

/// Two pages with one image, and a third with text alone.
QByteArray threePages()
{
    const QByteArray page =
        "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 240 160] /Resources << /XObject << /Im0 8 0 R >> >> "
        "/Contents 7 0 R >>";
    return pdfOfObjects(
        {"<< /Type /Catalog /Pages 2 0 R >>", "<< /Type /Pages /Kids [3 0 R 4 0 R 5 0 R] /Count 3 >>", page,
         page,
         "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 240 160] /Contents 6 0 R /Resources << /Font << /F1 << "
         "/Type /Font /Subtype /Type1 /BaseFont /Times-Roman >> >> >> >>",
         pdfStream({}, "BT /F1 30 Tf 20 60 Td (Only words) Tj ET"), pdfStream({}, wholePage), photoImage()});
}

TEST(ImageRecoder, ChangesASharedImageOnceAndNoOtherPage)
{
    const QByteArray before = built(threePages(), {}), after = built(threePages(), step);
    const QStringList images = Outside(after).images();
    ASSERT_EQ(images.size(), 2);
    EXPECT_EQ(images[0].mid(10), images[1].mid(10)); // all but its place: the same object
    EXPECT_EQ(Document::fromBytes(before)->draw(2, 3 * shown, 0, {}),
              Document::fromBytes(after)->draw(2, 3 * shown, 0, {}));
}

// What is measured must be what is saved, whichever step came before.
TEST(ImageRecoder, MakesTheSameWithAndWithoutTheCache)
{
    const auto cache = std::make_shared<ImageCache>();
    const QByteArray file = documentWith({photoImage()});
    const QByteArray cold = built(file, step, cache);
    EXPECT_GT(cache->samples.bytes(), 0U);
    built(file, CompressionStep{400, 0.7, false}, cache);
    EXPECT_EQ(built(file, step, cache).size(), cold.size());
    EXPECT_EQ(drawn(built(file, step, cache)), drawn(cold));
}

TEST(ImageRecoder, DecodesNoPictureTwiceForTheSameSearch)
{
    const auto cache = std::make_shared<ImageCache>();
    const QByteArray file = documentWith({photoImage()});
    built(file, step, cache);
    const size_t held = cache->samples.bytes();
    built(file, CompressionStep{100, 0.35, false}, cache);
    built(file, CompressionStep{400, 0.7, false}, cache);
    EXPECT_EQ(cache->samples.bytes(), held);
}

// Made an object it would only cost more.
TEST(ImageRecoder, LeavesAnInlineImageThatGainsNothing)
{
    const QByteArray dots = deflatedBytes(packedPhoto(photo, 1, 1));
    const QByteArray file = pdfOfObjects(
        {"<< /Type /Catalog /Pages 2 0 R >>", "<< /Type /Pages /Kids [3 0 R] /Count 1 >>",
         "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 240 160] /Contents 4 0 R /Resources << >> >>",
         pdfStream({}, "q 240 0 0 160 0 0 cm BI /W 480 /H 320 /BPC 1 /CS /G /F /Fl ID " + dots + " EI Q")});
    const CompressionStep best{2000, 1.0, false};
    EXPECT_EQ(built(file, best).size(), built(file, {}).size());
    EXPECT_EQ(drawn(built(file, best)), drawn(built(file, {})));
}

TEST(ImageRecoder, LeavesAnImageBeyondAllBounds)
{
    const QByteArray rgb = "/ColorSpace /DeviceRGB /BitsPerComponent 8 ",
                     flate = rgb + "/Filter /FlateDecode ", hex = rgb + "/Filter [/AHx /Fl] ",
                     huge = "<< /Predictor 15 /Columns 2147483647 >>",
                     samples = deflatedBytes(madePhoto(photo, 3));
    for (const QByteArray& beyond :
         {image(flate, samples, QSize(1 << 20, 1 << 20)), image(flate, samples, QSize(100'000'000, 1)),
          image(flate + "/DecodeParms " + huge, samples, photo),
          image(hex + "/DecodeParms [null " + huge + "]", hexBytes(samples), photo)}) {
        const QByteArray file = documentWith({beyond});
        EXPECT_EQ(built(file, step).size(), built(file, {}).size());
    }
}

TEST(ImageRecoder, EndsWhenStopped)
{
    const std::unique_ptr<Document> document = Document::fromBytes(documentWith({photoImage()}));
    std::stop_source stop;
    Assembly assembly({{document.get(), 0, 0}}, stop.get_token());
    stop.request_stop();
    EXPECT_THROW(assembly.recodeImages(step, std::make_shared<ImageCache>(), stop.get_token()), Cancelled);
}

TEST(MemoryBudget, LendsWhatIsFreeAndWaitsForTheRest)
{
    MemoryBudget budget(100);
    MemoryBudget::Lease most = budget.tryTake(70);
    EXPECT_TRUE(most);
    EXPECT_FALSE(budget.tryTake(40));
    std::stop_source stop;
    std::jthread owner([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        most.reset();
    });
    const MemoryBudget::Lease all = budget.take(100, stop.get_token());
    EXPECT_FALSE(budget.tryTake(1));
    stop.request_stop();
    EXPECT_THROW(budget.take(1, stop.get_token()), Cancelled);
}

TEST(BoundedCache, KeepsWhatWasAskedForLast)
{
    BoundedCache<int> cache(250);
    const auto one = std::make_shared<const int>(1);
    cache.insert("a", one, 100);
    cache.insert("b", one, 100);
    EXPECT_TRUE(cache.find("a"));
    cache.insert("c", one, 100);
    EXPECT_FALSE(cache.find("b"));
    EXPECT_TRUE(cache.find("a"));
    EXPECT_EQ(cache.bytes(), 200U);
    cache.insert("d", one, 400);
    EXPECT_TRUE(cache.find("a")); // what is too large pushes nothing out
    cache.insert("a", one, 50);
    EXPECT_EQ(cache.bytes(), 150U);
}

TEST(BoundedCache, TurnsNewValuesAway)
{
    BoundedCache<int> cache(250, WhenFull::NewestLeaves);
    const auto one = std::make_shared<const int>(1);
    for (const char* key : {"a", "b", "c"})
        cache.insert(key, one, 100);
    EXPECT_TRUE(cache.find("a"));
    EXPECT_TRUE(cache.find("b"));
    EXPECT_FALSE(cache.find("c"));
    EXPECT_EQ(cache.bytes(), 200U);
    cache.insert("c", one, 50);
    EXPECT_TRUE(cache.find("c"));
}

} // namespace
} // namespace folvane::pdf
