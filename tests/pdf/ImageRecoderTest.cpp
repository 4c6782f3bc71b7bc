#include "pdf/Assembly.h"

#include "pdf/Document.h"
#include "pdf/PageDrawer.h"
#include "pdf/images/ImageCache.h"
#include "pdf/madeImages.h"
#include "pictures/ImageSamples.h"
#include "pictures/MemoryBudget.h"
#include "pictures/jpegEncoding.h"
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

const QSize photo(480, 320), jpx(160, 120);
const QSize shown(240, 160); // points of the page, and pixels in which it is compared
const CompressionStep step{240, 0.55, false};

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

const QByteArray mediaBox = "/MediaBox [0 0 240 160] ", resources = mediaBox + "/Resources ";

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

QByteArray built(const QByteArray& file, const std::optional<CompressionStep>& quality,
                 std::shared_ptr<ImageCache> cache = std::make_shared<ImageCache>())
{
    const std::unique_ptr<Document> document = Document::fromBytes(file);
    std::vector<PageCopy> pages;
    for (int i = 0; i < document->pageCount(); ++i)
        pages.push_back({document.get(), i, 0});
    Assembly assembly(pages, {});
    if (quality)
        assembly.recodeImages(*quality, std::move(cache), {});
    return assembly.written({}, {});
}

QImage drawn(const QByteArray& file, int page = 0)
{
    const std::unique_ptr<Document> document = Document::fromBytes(file);
    return PageDrawer(*document).draw(page, shown, 0, {});
}

/// A file on disk, as other tools see it.
class Outside {
public:
    explicit Outside(const QByteArray& file)
    {
        QFile to(path());
        EXPECT_TRUE(to.open(QIODevice::WriteOnly) && to.write(file) == file.size());
    }
    QString path() const { return m_folder.filePath("file.pdf"); }
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

QByteArray sampleFile(const char* name)
{
    QFile file(QStringLiteral(FOLVANE_TEST_SAMPLES "/") + name);
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

/// How a photo is stored.
struct Coding {
    const char* filter;
    QByteArray (*bytes)(int channels, int bits);
};

QByteArray packed(int channels, int bits)
{
    return packedPhoto(photo, channels, bits);
}
QByteArray jpeg(int channels, JpegStyle style = JpegStyle::Usual)
{
    return jpegBytes(madePhoto(photo, channels), photo, channels, style);
}
QByteArray invertedJpeg(JpegStyle style)
{
    return jpegBytes(invertedBytes(madePhoto(photo, 4)), photo, 4, style);
}

const Coding plain{"", packed};
const Coding flated{"/FlateDecode", [](int c, int bits) { return deflatedBytes(packed(c, bits)); }};
const Coding blackened{"/FlateDecode", [](int, int) { return deflatedBytes(blackenedPhoto()); }};
const Coding tooFewRows{"/FlateDecode",
                        [](int, int) { return deflatedBytes(packed(3, 8).left(480 * 3 * 200)); }};
const Coding flat{"", [](int, int) { return QByteArray(480 * 320 * 3, 'b'); }}; // which the writer deflates
const Coding lzw{"/LZWDecode", [](int c, int bits) { return lzwBytes(packed(c, bits)); }};
const Coding runs{"[/RunLengthDecode]", [](int c, int bits) { return runLengthBytes(packed(c, bits)); }};
const Coding hexOfFlate{"[/ASCIIHexDecode /FlateDecode]",
                        [](int c, int bits) { return deflatedBytes(packed(c, bits)).toHex() + '>'; }};
const Coding dct{"/DCTDecode", [](int c, int) { return jpeg(c); }};
const Coding flateOfJpeg{"[/FlateDecode /DCTDecode]", [](int c, int) { return deflatedBytes(jpeg(c)); }};
const Coding poorDct{"/DCTDecode", [](int, int) {
                         const QByteArray grey = madePhoto(photo, 1);
                         return encodeJpeg(ImageSamples{photo, 1, {grey.begin(), grey.end()}}.view(), 3);
                     }};
const Coding cutDct{"/DCTDecode", [](int c, int) { return jpeg(c).left(20000); }};
const Coding plainRgb{"/DCTDecode", [](int, int) { return jpeg(3, JpegStyle::PlainRgb); }};
const Coding invertedDct{"/DCTDecode", [](int, int) { return invertedJpeg(JpegStyle::MarkedInks); }};
const Coding ycck{"/DCTDecode", [](int, int) { return jpeg(4, JpegStyle::Ycck); }};
const Coding invertedYcck{"/DCTDecode", [](int, int) { return invertedJpeg(JpegStyle::Ycck); }};
const Coding group4{"/CCITTFaxDecode /DecodeParms << /K -1 /Columns 480 /Rows 320 >>",
                    [](int, int) { return group4Bytes(packed(1, 1), photo); }};
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
const QByteArray smallMask = flate(grey + "/Decode [1 0]", invertedBytes(halfMask({96, 64})), {96, 64});
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
    {"Lzw", Recoded, "/DeviceRGB", 3, 8, lzw},
    {"RunLength", Recoded, "/DeviceRGB", 3, 8, runs},
    {"HexOfFlate", Recoded, "/DeviceRGB", 3, 8, hexOfFlate},
    {"FlateOfJpeg", Recoded, "/DeviceRGB", 3, 8, flateOfJpeg},
    {"JpegGrey", Recoded, "/DeviceGray", 1, 8, dct},
    {"JpegRgb", Recoded, "/DeviceRGB", 3, 8, dct},
    {"JpegRgbUntransformed", Recoded, "/DeviceRGB", 3, 8, plainRgb, "/DecodeParms << /ColorTransform 0 >>"},
    {"JpegCmyk", Recoded, "/DeviceCMYK", 4, 8, dct},
    {"JpegCmykInverted", Recoded, "/DeviceCMYK", 4, 8, invertedDct, inverted},
    {"JpegYcckInverted", Recoded, "/DeviceCMYK", 4, 8, invertedYcck, inverted},
    {"JpegYcck", Recoded, "/DeviceCMYK", 4, 8, ycck},
    {"JpegLab", InFalseColours, lab, 3, 8, dct},
    {"Group4", Dithered, "/DeviceGray", 1, 1, group4},
    {"Group4Coloured", Dithered, "[/Indexed /DeviceRGB 1 <ff8000 004080>]", 1, 1, group4},
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

class ImageKinds : public testing::TestWithParam<Kind> {};

TEST_P(ImageKinds, LookTheSameAndTakeNoMore)
{
    const Kind& row = GetParam();
    const QByteArray file = documentWith(storedPhoto(row), row.object6);
    const QByteArray before = built(file, {}), after = built(file, step);
    const Outside was(before), is(after);

    if (faultsOf(was.path()).isEmpty())
        EXPECT_EQ(faultsOf(is.path()).toStdString(), "");
    EXPECT_EQ(textOf(is.path()), textOf(was.path()));
    const bool isRecoded = row.fate != Stays;
    EXPECT_EQ(is.images() != was.images(), isRecoded);
    EXPECT_LE(after.size() + isRecoded, before.size());
    EXPECT_GT(similarity(drawn(before), drawn(after)), row.fate == Dithered ? 0.3 : 0.85);
    EXPECT_LT(largestCellDifference(drawn(before), drawn(after)), 8);
    if (row.fate != InFalseColours) // and it knows no profiles, and mixes inks by subtraction
        EXPECT_LT(largestCellDifference(was.byMutool(), is.byMutool()), 9);
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
           + deflatedBytes(packedPhoto(photo, channels, bits)) + " EI Q";
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

class ImagePlaces : public testing::TestWithParam<PlaceCase> {};

TEST_P(ImagePlaces, AreAllFound)
{
    const PlaceCase& row = GetParam();
    const MadePage page{row.content, resources + "<< " + row.resources + " >> " + row.pageEntries};
    const QByteArray file = pdfOfPages({page}, {}, QList<QByteArray>{photoImage()} + row.more);
    const QByteArray before = built(file, {}), after = built(file, step);
    EXPECT_LT(after.size(), before.size() / 4);
    EXPECT_LT(largestCellDifference(drawn(before), drawn(after)), 8);
    EXPECT_LT(largestCellDifference(Outside(before).byMutool(), Outside(after).byMutool()), 9);
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

TEST(ImageRecoder, ChangesASharedImageOnceAndNoOtherPage)
{
    const MadePage withPhoto{wholePage, mediaBox + QByteArray(withImage).replace("5 0 R", "9 0 R")};
    const QByteArray file = pdfOfPages({withPhoto, withPhoto, {shownText("Only words")}}, {}, {photoImage()});
    const QByteArray before = built(file, {}), after = built(file, step);
    const QStringList images = Outside(after).images();
    ASSERT_EQ(images.size(), 2);
    EXPECT_EQ(images[0].mid(10), images[1].mid(10)); // all but its place: the same object
    EXPECT_EQ(drawn(before, 2), drawn(after, 2));
}

// What is measured must be what is saved, whichever step came before, and no picture is decoded twice for a search.
TEST(ImageRecoder, MakesTheSameWithAndWithoutTheCache)
{
    const auto cache = std::make_shared<ImageCache>();
    const QByteArray file = documentWith(photoImage());
    const QByteArray cold = built(file, step, cache);
    const size_t held = cache->samples.bytes();
    EXPECT_GT(held, 0U);
    built(file, CompressionStep{400, 0.7, false}, cache);
    built(file, CompressionStep{100, 0.35, false}, cache);
    EXPECT_EQ(cache->samples.bytes(), held);
    EXPECT_EQ(built(file, step, cache).size(), cold.size());
    EXPECT_EQ(drawn(built(file, step, cache)), drawn(cold));
}

// Made an object it would only cost more.
TEST(ImageRecoder, LeavesAnInlineImageThatGainsNothing)
{
    const QByteArray file = pdfOfPages({{inlined("/BPC 1 /CS /G", 1, 1), resources + "<< >>"}});
    const CompressionStep best{2000, 1.0, false};
    EXPECT_EQ(built(file, best).size(), built(file, {}).size());
    EXPECT_EQ(drawn(built(file, best)), drawn(built(file, {})));
}

TEST(ImageRecoder, LeavesAnImageBeyondAllBounds)
{
    const QByteArray rgb = "/ColorSpace /DeviceRGB /BitsPerComponent 8 ", samples = madePhoto(photo, 3),
                     huge = "<< /Predictor 15 /Columns 2147483647 >>";
    for (const QByteArray& beyond :
         {flate(rgb, samples, QSize(1 << 20, 1 << 20)), flate(rgb, samples, QSize(100'000'000, 1)),
          flate(rgb + "/DecodeParms " + huge, samples),
          image(rgb + "/Filter [/AHx /Fl] /DecodeParms [null " + huge + "]", hexOfFlate.bytes(3, 8))}) {
        const QByteArray file = documentWith(beyond);
        EXPECT_EQ(built(file, step).size(), built(file, {}).size());
    }
}

TEST(ImageRecoder, EndsWhenStopped)
{
    const std::unique_ptr<Document> document = Document::fromBytes(documentWith(photoImage()));
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

TEST(BoundedCache, KeepsWhatWasAskedForLastOrWhatCameFirst)
{
    const auto one = std::make_shared<const int>(1);
    BoundedCache<int> cache(250), first(250, WhenFull::NewestLeaves);
    for (const char* key : {"a", "b", "c"}) {
        cache.find("a");
        cache.insert(key, one, 100);
        first.insert(key, one, 100);
    }
    EXPECT_TRUE(cache.find("a") && !cache.find("b") && cache.find("c"));
    EXPECT_TRUE(first.find("a") && first.find("b") && !first.find("c"));
    EXPECT_EQ(cache.bytes() + first.bytes(), 400U);
    cache.insert("d", one, 400);
    EXPECT_TRUE(cache.find("a")); // what is too large pushes nothing out
    cache.insert("a", one, 50);
    EXPECT_EQ(cache.bytes(), 150U);
    first.insert("c", one, 50);
    EXPECT_TRUE(first.find("c"));
}

} // namespace
} // namespace folvane::pdf
