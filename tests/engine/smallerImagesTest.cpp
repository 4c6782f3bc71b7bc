// Images of documents that are made smaller: how they are stored, and where they stand.

#include "engine/EngineTest.h"
#include "pdf/madeImages.h"
#include "support/madePdf.h"
#include "support/similarity.h"
#include "support/tools.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>

namespace folvane {
namespace {

using pdf::deflatedBytes, pdf::madeJpeg, pdf::madePhoto;

const QSize photo(480, 320), jpx(160, 120);
const CompressionStep step{240, 0.55, false};

class SmallerImages : public EngineTest {
protected:
    /// The file as it is and with smaller images, by their paths.
    struct Copies {
        QString before, after;

        qint64 saved() const { return QFileInfo(before).size() - QFileInfo(after).size(); }
    };

    Copies copies(const QByteArray& file, const std::vector<int>& pages = {0}, CompressionStep by = step)
    {
        const QUrl source = opened("images.pdf", file);
        BuildPlan plan;
        add(plan, source, pages);
        const QString before = built(plan);
        plan.quality = by;
        return {before, built(plan)};
    }
    /// How far the copies look apart, cell by cell.
    int difference(const Copies& files, int cells = 8)
    {
        return largestCellDifference(drawn(files.before, 0, 240), drawn(files.after, 0, 240), cells);
    }
};

QByteArray image(const QByteArray& entries, const QByteArray& data, QSize size = photo)
{
    return pdfStream("/Type /XObject /Subtype /Image /Width " + QByteArray::number(size.width()) + " /Height "
                         + QByteArray::number(size.height()) + " " + entries,
                     data);
}

QByteArray flate(const QByteArray& entries, const QByteArray& samples, QSize size = photo)
{
    return image(entries + " /Filter /FlateDecode", deflatedBytes(samples), size);
}

const QByteArray resources = "/MediaBox [0 0 240 160] /Resources ";

/// A page with text on which the image lies, leaving a margin of blue; object 6 is for what it refers to.
QByteArray documentWith(const QByteArray& image, const QByteArray& object6 = "null")
{
    return pdfOfPages({{"0.2 0.4 0.8 rg 0 0 240 160 re f q 220 0 0 140 10 10 cm /Im0 Do Q "
                        "BT /F1 8 Tf 20 2 Td (Words remain) Tj ET",
                        resources
                            + "<< /XObject << /Im0 5 0 R >> /Font << /F1 << /Type /Font /Subtype /Type1 "
                              "/BaseFont /Helvetica >> >> >>"}},
                      {}, {image, object6});
}

QByteArray sampleFile(const char* name)
{
    QFile file(QStringLiteral(FOLVANE_TEST_SAMPLES "/") + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Left half seen, a soft edge, right half not; the other way round with a slope below 0.
QByteArray halfMask(QSize size, int slope = 8)
{
    QByteArray mask;
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x)
            mask.append(char(std::clamp(128 + (size.width() / 2 - x) * slope + y % 3, 0, 255)));
    }
    return mask;
}

/// Black where the half mask hides it, as many programs write it.
QByteArray blackenedPhoto()
{
    QByteArray samples = madePhoto(photo, 3);
    const QByteArray mask = halfMask(photo);
    for (qsizetype i = 0; i < mask.size(); ++i) {
        if (mask[i] == 0)
            samples.replace(3 * i, 3, QByteArray(3, '\0'));
    }
    return samples;
}

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

QByteArray group4()
{
    QTemporaryFile bitmap;
    EXPECT_TRUE(bitmap.open() && bitmap.write(madePhoto(photo, 1, 1)) > 0 && bitmap.flush());
    return runTool("convert-im6.q16",
                   {"-size", "480x320", "-depth", "1", "gray:" + bitmap.fileName(), "group4:-"})
        .output;
}

/// Four channels with Adobe's marker saying that they are inks as they stand.
QByteArray jpegOfInks()
{
    QByteArray jpeg = madeJpeg(photo, 4);
    jpeg[jpeg.indexOf("Adobe") + 11] = 0;
    return jpeg;
}

/// Without the segment at that place.
QByteArray without(QByteArray jpeg, qsizetype at)
{
    return jpeg.remove(at, 2 + 256 * jpeg[at + 2] + jpeg[at + 3]);
}

/// How a photo is stored.
struct Coding {
    const char* filter;
    QByteArray (*bytes)(int channels, int bits);
};

const Coding plain{"", [](int c, int bits) { return madePhoto(photo, c, bits); }};
const Coding flated{"/FlateDecode", [](int c, int bits) { return deflatedBytes(madePhoto(photo, c, bits)); }};
const Coding blackened{"/FlateDecode", [](int, int) { return deflatedBytes(blackenedPhoto()); }};
const Coding tooFewRows{"/FlateDecode",
                        [](int, int) { return deflatedBytes(madePhoto(photo, 3).left(480LL * 3 * 200)); }};
const Coding flat{"", [](int, int) { return QByteArray(480LL * 320 * 3, 'b'); }}; // which the writer deflates
const Coding hexOfFlate{"[/ASCIIHexDecode /FlateDecode]", [](int c, int bits) {
                            return deflatedBytes(madePhoto(photo, c, bits)).toHex() + '>';
                        }};
const Coding dct{"/DCTDecode", [](int c, int) { return madeJpeg(photo, c); }};
const Coding flateOfJpeg{"[/FlateDecode /DCTDecode]",
                         [](int c, int) { return deflatedBytes(madeJpeg(photo, c)); }};
const Coding poorDct{"/DCTDecode", [](int c, int) { return madeJpeg(photo, c, 3); }};
const Coding cutDct{"/DCTDecode", [](int c, int) { return madeJpeg(photo, c).left(20000); }};
const Coding unmarkedRgb{"/DCTDecode", [](int, int) { return without(madeJpeg(photo, 3), 2); }};
const Coding inks{"/DCTDecode", [](int, int) { return jpegOfInks(); }};
const Coding unmarkedInks{"/DCTDecode",
                          [](int, int) { return without(jpegOfInks(), jpegOfInks().indexOf("Adobe") - 4); }};
const Coding fax{"/CCITTFaxDecode /DecodeParms << /K -1 /Columns 480 /Rows 320 >>",
                 [](int, int) { return group4(); }};
const Coding colourJpx{"/JPXDecode", [](int, int) { return sampleFile("colour.jp2"); }};
const Coding greyJpx{"/JPXDecode", [](int, int) { return sampleFile("grey.jp2"); }};

const QByteArray calGrey = "[/CalGray << /WhitePoint [0.95 1 1.09] /Gamma 1.8 >>]";
const QByteArray calRgb =
    "[/CalRGB << /WhitePoint [0.95 1 1.09] /Gamma [1.8 1.8 1.8] /Matrix [0.41 0.21 0.02 0.36 "
    "0.72 0.12 0.18 0.07 0.95] >>]";
const QByteArray lab = "[/Lab << /WhitePoint [0.96 1 0.82] /Range [-40 40 -40 40] >>]";
const QByteArray spot = "[/Separation /Spot /DeviceCMYK 6 0 R]";
const QByteArray tint = "<< /FunctionType 2 /Domain [0 1] /N 1 /C0 [0 0 0 0] /C1 [0.1 0.9 0.6 0] >>";
const QByteArray twoTints = pdfStream("/FunctionType 4 /Domain [0 1 0 1] /Range [0 1 0 1 0 1]",
                                      "{ 1 exch sub exch 1 exch sub dup 3 1 roll }");
const QByteArray paletteStream =
    pdfStream("/Filter /FlateDecode", deflatedBytes(QByteArray::fromHex(palette(3))));
const QByteArray inverted = "/Decode [1 0 1 0 1 0 1 0]";
const QByteArray grey = "/ColorSpace /DeviceGray /BitsPerComponent 8 ";
const QByteArray softMask = flate(grey, halfMask(photo)),
                 matte = flate(grey + "/Matte [0 0 0]", halfMask(photo));
const QByteArray smallMask = flate(grey + "/Decode [1 0]", halfMask({96, 64}, -8), {96, 64});
const QByteArray stencil = flate("/ImageMask true /BitsPerComponent 1",
                                 (QByteArray(30, '\0') + QByteArray(30, '\xff')).repeated(320));

enum Fate {
    Recoded,
    Dithered,       ///< recoded; such bitmaps lose the pattern that they consist of
    InFalseColours, ///< recoded; mutool draws pictures in Lab so, to begin with
    Stays
};

struct Kind {
    const char* name;
    Fate fate;
    QByteArray space = {};
    int channels = 1;
    int bits = 8;
    const Coding& coding = flated;
    QByteArray more = {};
    QByteArray object6 = "null";
};

const Kind kinds[] = {
    {"Grey8", Recoded, "/DeviceGray"},
    {"Grey1", Dithered, "/DeviceGray", 1, 1},
    {"Grey2", Recoded, "/DeviceGray", 1, 2},
    {"Grey4", Recoded, "/DeviceGray", 1, 4},
    {"Grey16", Recoded, "/DeviceGray", 1, 16},
    {"Rgb8", Recoded, "/DeviceRGB", 3},
    {"Rgb4", Recoded, "/DeviceRGB", 3, 4},
    {"Rgb16", Recoded, "/DeviceRGB", 3, 16},
    {"Cmyk8", Recoded, "/DeviceCMYK", 4},
    {"CalGrey", Recoded, calGrey},
    {"CalRgb", Recoded, calRgb, 3},
    {"IccRgb", Recoded, "[/ICCBased 6 0 R]", 3, 8, flated, {}, pdfStream("/N 3 /Alternate /DeviceRGB", {})},
    {"IccCmyk", Recoded, "[/ICCBased 6 0 R]", 4, 8, flated, {}, pdfStream("/N 4 /Alternate /DeviceCMYK", {})},
    {"Lab", InFalseColours, lab, 3},
    {"Indexed4", Recoded, "[/Indexed /DeviceRGB 15 " + palette(3) + "]", 1, 4},
    {"IndexedPaletteInAStream", Recoded, "[/Indexed /DeviceRGB 15 6 0 R]", 1, 4, flated, {}, paletteStream},
    {"IndexedCmykFromThePalettesEnd", Recoded, "[/Indexed /DeviceCMYK 15 " + palette(4) + "]", 1, 4, flated,
     "/Decode [15 0]"},
    {"IndexedLab", InFalseColours, "[/Indexed " + lab + " 15 " + palette(3) + "]", 1, 4},
    {"Separation", Recoded, spot, 1, 8, flated, {}, tint},
    {"DeviceN", Recoded, "[/DeviceN [/Spot /Other] /DeviceRGB 6 0 R]", 2, 8, flated, {}, twoTints},
    {"GreyBackwards", Recoded, "/DeviceGray", 1, 8, flated, "/Decode [1 0]"},
    {"RgbStretched", Recoded, "/DeviceRGB", 3, 4, flated, "/Decode [0.2 0.8 1 0 0 0.5]"},

    {"Uncompressed", Recoded, "/DeviceRGB", 3, 8, plain},
    {"HexOfFlate", Recoded, "/DeviceRGB", 3, 8, hexOfFlate},
    {"FlateOfJpeg", Recoded, "/DeviceRGB", 3, 8, flateOfJpeg},
    {"JpegGrey", Recoded, "/DeviceGray", 1, 8, dct},
    {"JpegRgb", Recoded, "/DeviceRGB", 3, 8, dct},
    {"JpegRgbUntransformed", Recoded, "/DeviceRGB", 3, 8, unmarkedRgb,
     "/DecodeParms << /ColorTransform 0 >>"},
    {"JpegCmyk", Recoded, "/DeviceCMYK", 4, 8, unmarkedInks},
    {"JpegCmykInverted", Recoded, "/DeviceCMYK", 4, 8, inks, inverted},
    {"JpegYcckInverted", Recoded, "/DeviceCMYK", 4, 8, dct, inverted},
    {"JpegYcck", Recoded, "/DeviceCMYK", 4, 8, dct},
    {"JpegLab", InFalseColours, lab, 3, 8, dct},
    {"Group4", Dithered, "/DeviceGray", 1, 1, fax},
    {"Group4Coloured", Dithered, "[/Indexed /DeviceRGB 1 <ff8000 004080>]", 1, 1, fax},
    {"JpxColour", Recoded, "/DeviceRGB", 3, 8, colourJpx},
    {"JpxWithoutSpace", Recoded, {}, 3, 0, colourJpx},
    {"JpxGrey", Recoded, "/DeviceGray", 1, 0, greyJpx},
    {"JpxOfColourNumbers", Recoded, spot, 1, 0, greyJpx, {}, tint},

    {"SoftMask", Recoded, "/DeviceRGB", 3, 8, blackened, "/SMask 6 0 R", softMask},
    {"SoftMaskOfAnotherSize", Recoded, "/DeviceRGB", 3, 8, blackened, "/SMask 6 0 R", smallMask},
    {"Stencilled", Recoded, "/DeviceRGB", 3, 8, flated, "/Mask 6 0 R", stencil},
    {"JpegWithSoftMask", Recoded, "/DeviceRGB", 3, 8, dct, "/SMask 6 0 R", softMask},
    {"ItselfAStencil", Stays, {}, 1, 1, flated, "/ImageMask true"},
    {"ColourKey", Stays, "/DeviceRGB", 3, 8, flated, "/Mask [0 90 0 255 0 255]"},
    {"Matte", Stays, "/DeviceRGB", 3, 8, blackened, "/SMask 6 0 R", matte},

    {"JpegOfPoorerQuality", Stays, "/DeviceGray", 1, 8, poorDct},
    {"FlatColour", Stays, "/DeviceRGB", 3, 8, flat},
    {"TooFewRows", Stays, "/DeviceRGB", 3, 8, tooFewRows},
    {"JpegCutShort", Stays, "/DeviceRGB", 3, 8, cutDct},
    {"JpegOfOtherChannels", Stays, "/DeviceRGB", 1, 8, dct},
    {"PaletteOnItself", Stays, "6 0 R", 1, 4, flated, {}, "[/Indexed 6 0 R 15 <00>]"}};

QByteArray storedPhoto(const Kind& row)
{
    QByteArray entries = row.more;
    if (!row.space.isEmpty())
        entries += " /ColorSpace " + row.space;
    if (row.bits != 0)
        entries += " /BitsPerComponent " + QByteArray::number(row.bits);
    if (*row.coding.filter)
        entries += " /Filter " + QByteArray(row.coding.filter);
    return image(entries, row.coding.bytes(row.channels, row.bits),
                 entries.contains("/JPXDecode") ? jpx : photo);
}

class ImageKinds : public SmallerImages, public testing::WithParamInterface<Kind> {};

TEST_P(ImageKinds, LookTheSameAndTakeNoMore)
{
    const Kind& row = GetParam();
    const Copies files = copies(documentWith(storedPhoto(row), row.object6));

    if (faultsOf(files.before).isEmpty())
        EXPECT_EQ(faultsOf(files.after).toStdString(), "");
    EXPECT_EQ(textOf(files.after), textOf(files.before));
    const bool isRecoded = row.fate != Stays;
    EXPECT_EQ(imagesIn(files.after) != imagesIn(files.before), isRecoded);
    EXPECT_GE(files.saved(), isRecoded);
    EXPECT_LT(difference(files), row.fate == Recoded ? 8 : 10);
    EXPECT_LT(difference(files, 40), row.fate == Recoded ? 45 : 60);
    if (row.fate != InFalseColours) // and it knows no profiles, and mixes inks by subtraction
        EXPECT_LT(largestCellDifference(drawnByMupdf(files.before), drawnByMupdf(files.after)), 9);
}

INSTANTIATE_TEST_SUITE_P(Rows, ImageKinds, testing::ValuesIn(kinds),
                         [](const auto& row) { return std::string(row.param.name); });

QByteArray photoImage()
{
    return storedPhoto({"", Recoded, "/DeviceRGB", 3});
}

QByteArray inlined(const QByteArray& entries, int channels, int bits = 8)
{
    return "q 240 0 0 160 0 0 cm BI /W 480 /H 320 /F /Fl " + entries + " ID "
           + deflatedBytes(madePhoto(photo, channels, bits)) + " EI Q";
}

QByteArray form(const QByteArray& entries, const QByteArray& content)
{
    return pdfStream("/Type /XObject /Subtype /Form /BBox [0 0 240 160] " + entries, content);
}

const QByteArray wholePage = "240 0 0 160 0 0 cm /Im0 Do";
const QByteArray withImage = "/Resources << /XObject << /Im0 5 0 R >> >>";
const QByteArray glyphs =
    "<< /Type /Font /Subtype /Type3 /FontBBox [0 0 1500 1000] /FontMatrix [0.001 0 0 0.001 0 0] "
    "/CharProcs << /a 7 0 R >> /Encoding << /Type /Encoding /Differences [97 /a] >> /FirstChar 97 "
    "/LastChar 97 /Widths [1500] "
    + withImage + " >>";

const QByteArray tile = pdfStream("/Type /Pattern /PatternType 1 /PaintType 1 /TilingType 1 "
                                  "/BBox [0 0 240 160] /XStep 240 /YStep 160 "
                                      + withImage,
                                  wholePage);

/// Where an image can stand: object 5 is the image in each.
struct PlaceCase {
    const char* name;
    QByteArray resources;
    QByteArray content;
    QList<QByteArray> more = {}; ///< from object 6 on
    QByteArray pageEntries = {};
};

class ImagePlaces : public SmallerImages, public testing::WithParamInterface<PlaceCase> {};

TEST_P(ImagePlaces, AreAllFound)
{
    const PlaceCase& row = GetParam();
    const MadePage page{row.content, resources + "<< " + row.resources + " >> " + row.pageEntries};
    const Copies files = copies(pdfOfPages({page}, {}, QList<QByteArray>{photoImage()} + row.more));
    EXPECT_LT(QFileInfo(files.after).size(), QFileInfo(files.before).size() / 4);
    EXPECT_LT(difference(files), 8);
    EXPECT_LT(largestCellDifference(drawnByMupdf(files.before), drawnByMupdf(files.after)), 9);
}

const PlaceCase places[] = {
    {"Page", "/XObject << /Im0 5 0 R >>", wholePage},
    {"InTheContentItself", {}, inlined("/BPC 8 /CS /RGB", 3)},
    {"InTheContentOfAForm",
     "/XObject << /Fm0 6 0 R >>",
     "/Fm0 Do",
     {form("/Resources << >>", inlined("/BPC 8 /CS /G", 1))}},
    {"FormInAForm",
     "/XObject << /Fm0 6 0 R >>",
     "/Fm0 Do",
     {form("/Resources << /XObject << /Fm1 7 0 R >> >>", "/Fm1 Do"), form(withImage, wholePage)}},
    {"Pattern", "/Pattern << /P0 6 0 R >>", "/Pattern cs /P0 scn 0 0 240 160 re f", {tile}},
    {"Annotation",
     {},
     {},
     {form(withImage, wholePage)},
     "/Annots [<< /Type /Annot /Subtype /Stamp /F 4 /Rect [0 0 240 160] /AP << /N 6 0 R >> >>]"},
    {"Glyph",
     "/Font << /F0 6 0 R >>",
     "BT /F0 160 Tf 0 0 Td (a) Tj ET",
     {glyphs, pdfStream({}, "1500 0 d0 1500 0 0 1000 0 0 cm /Im0 Do")}},
    {"MaskingGroup",
     "/ExtGState << /G0 << /SMask << /S /Luminosity /G 6 0 R >> >> >>",
     "/G0 gs 1 0 0 rg 0 0 240 160 re f",
     {form("/Group << /S /Transparency /CS /DeviceRGB >> " + withImage, wholePage)}}};

INSTANTIATE_TEST_SUITE_P(Rows, ImagePlaces, testing::ValuesIn(places),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(SmallerImages, ASharedImageIsChangedOnceAndNoOtherPage)
{
    const MadePage withPhoto{wholePage, resources + "<< /XObject << /Im0 9 0 R >> >>"};
    const Copies files =
        copies(pdfOfPages({withPhoto, withPhoto, {shownText("Only words")}}, {}, {photoImage()}), {0, 1, 2});
    const QStringList images = imagesIn(files.after);
    ASSERT_EQ(images.size(), 2);
    EXPECT_EQ(images[0].mid(10), images[1].mid(10)); // all but its place: the same object
    EXPECT_EQ(drawn(files.before, 2), drawn(files.after, 2));
}

// Made an object it would only cost more.
TEST_F(SmallerImages, AnInlineImageThatGainsNothingStays)
{
    const QByteArray file = pdfOfPages({{inlined("/BPC 1 /CS /G", 1, 1), resources + "<< >>"}});
    const Copies files = copies(file, {0}, {2000, 1.0, false});
    EXPECT_EQ(files.saved(), 0);
    EXPECT_EQ(difference(files), 0);
}

TEST_F(SmallerImages, AnImageBeyondAllBoundsStays)
{
    const QByteArray rgb = "/ColorSpace /DeviceRGB /BitsPerComponent 8 ", samples = madePhoto(photo, 3),
                     huge = "<< /Predictor 15 /Columns 2147483647 >>";
    for (const QByteArray& beyond :
         {flate(rgb, samples, QSize(1 << 20, 1 << 20)), flate(rgb, samples, QSize(100'000'000, 1)),
          flate(rgb + "/DecodeParms " + huge, samples),
          image(rgb + "/Filter [/AHx /Fl] /DecodeParms [null " + huge + "]", hexOfFlate.bytes(3, 8))}) {
        EXPECT_EQ(copies(documentWith(beyond)).saved(), 0);
        engine.forget(QUrl::fromLocalFile(path("images.pdf")));
    }
}

} // namespace
} // namespace folvane
