#include "pdf/drawing/PageRasteriser.h"

#include "support/madePdf.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>

namespace folvane::pdf {
namespace {

constexpr QRgb white = 0xffffffff, red = 0xffff0000, green = 0xff00ff00, blue = 0xff0000ff;

QByteArray onePage(const QByteArray& pageEntries, const QByteArray& content,
                   const QList<QByteArray>& more = {}, const QByteArray& catalogueEntries = {})
{
    return pdfOfObjects(
        QList<QByteArray>{"<< /Type /Catalog /Pages 2 0 R " + catalogueEntries + " >>",
                          "<< /Type /Pages /Kids [3 0 R] /Count 1 >>",
                          "<< /Type /Page /Parent 2 0 R /Contents 4 0 R " + pageEntries + " >>",
                          pdfStream({}, content)}
        + more);
}

// The crop box is 60 x 40 and starts at (50, 30). Red, green and blue mark three corners of it, the fourth is
// white, and black lies outside.
QByteArray markedPage(int rotate)
{
    return onePage("/MediaBox [0 0 200 150] /CropBox [50 30 110 70] /Rotate " + QByteArray::number(rotate),
                   "0 g 0 0 200 150 re f 1 g 50 30 60 40 re f 1 0 0 rg 50 60 10 10 re f "
                   "0 1 0 rg 100 60 10 10 re f 0 0 1 rg 50 30 10 10 re f");
}

QImage drawn(const QByteArray& file, QSize pixels, int turn = 0)
{
    const auto pages = PageRasteriser::open(file);
    return pages ? pages->draw(0, pixels, turn) : QImage();
}

QList<QRgb> corners(const QImage& image)
{
    const int right = image.width() - 6, bottom = image.height() - 6;
    return {image.pixel(5, 5), image.pixel(right, 5), image.pixel(right, bottom), image.pixel(5, bottom)};
}

QImage drawnByMutool(const QByteArray& file)
{
    const QTemporaryDir folder;
    QFile source(folder.filePath("source.pdf"));
    if (!source.open(QIODevice::WriteOnly) || source.write(file) != file.size() || !source.flush())
        return {};
    QProcess::execute("mutool",
                      {"draw", "-q", "-r", "72", "-o", folder.filePath("page.png"), source.fileName()});
    return QImage(folder.filePath("page.png"));
}

struct TurnCase {
    const char* name;
    int rotate; // in the page
    int turn;   // asked for
};

class PageRasteriserTurns : public testing::TestWithParam<TurnCase> {};

TEST_P(PageRasteriserTurns, ShowsTheCropBoxTurnedClockwise)
{
    const auto [name, rotate, turn] = GetParam();
    const int quarters = ((rotate + turn) / 90 % 4 + 4) % 4;
    const QSize pixels = quarters % 2 == 0 ? QSize(60, 40) : QSize(40, 60);
    const QImage image = drawn(markedPage(rotate), pixels, turn);
    ASSERT_EQ(image.size(), pixels);

    QList<QRgb> expected = {red, green, white, blue}; // clockwise from the upper left
    std::rotate(expected.begin(), expected.end() - quarters, expected.end());
    EXPECT_EQ(corners(image), expected);
    EXPECT_EQ(corners(image), corners(drawnByMutool(markedPage(rotate + turn))));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, PageRasteriserTurns,
    testing::Values(TurnCase{"Page0Turn0", 0, 0}, TurnCase{"Page0Turn90", 0, 90},
                    TurnCase{"Page0Turn180", 0, 180}, TurnCase{"Page0Turn270", 0, 270},
                    TurnCase{"Page90Turn0", 90, 0}, TurnCase{"Page90Turn90", 90, 90},
                    TurnCase{"Page90Turn180", 90, 180}, TurnCase{"Page90Turn270", 90, 270},
                    TurnCase{"Page180Turn0", 180, 0}, TurnCase{"Page180Turn90", 180, 90},
                    TurnCase{"Page180Turn180", 180, 180}, TurnCase{"Page180Turn270", 180, 270},
                    TurnCase{"Page270Turn0", 270, 0}, TurnCase{"Page270Turn90", 270, 90},
                    TurnCase{"Page270Turn180", 270, 180}, TurnCase{"Page270Turn270", 270, 270},
                    TurnCase{"PageNegative", -90, 90},    // met in practice
                    TurnCase{"PageBeyondARound", 450, 0}, // met in practice
                    TurnCase{"TurnNegative", 180, -270}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(PageRasteriser, ARotationThatIsNoQuarterCountsAsNone)
{
    EXPECT_EQ(corners(drawn(markedPage(45), {60, 40})), (QList<QRgb>{red, green, white, blue}));
    EXPECT_EQ(corners(drawn(markedPage(45), {40, 60}, 90)), (QList<QRgb>{blue, red, green, white}));
}

struct SizeCase {
    const char* name;
    const char* boxes;
    QSize pixels;
};

class PageRasteriserSizes : public testing::TestWithParam<SizeCase> {};

TEST_P(PageRasteriserSizes, FillsExactlyThePixelsAskedFor)
{
    const auto [name, boxes, pixels] = GetParam();
    const QImage image = drawn(onePage(boxes, "1 0 0 rg -20000 -20000 40000 40000 re f"), pixels);
    ASSERT_EQ(image.size(), pixels);
    EXPECT_EQ(image.format(), QImage::Format_RGB888);
    EXPECT_EQ(image.pixel(0, 0), red);
    EXPECT_EQ(image.pixel(pixels.width() - 1, pixels.height() - 1), red);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, PageRasteriserSizes,
    testing::Values(SizeCase{"Letter", "/MediaBox [0 0 612 792]", {278, 360}},
                    SizeCase{"OddFractions", "/MediaBox [0 0 419.528 595.276]", {1409, 2000}},
                    SizeCase{"OnePoint", "/MediaBox [0 0 1 1]", {1, 1}},
                    SizeCase{"OnePointEnlarged", "/MediaBox [0 0 1 1]", {360, 360}},
                    SizeCase{"Sliver", "/MediaBox [0 0 1 14400]", {1, 360}},
                    SizeCase{"Huge", "/MediaBox [0 0 14400 14400]", {100, 100}},
                    SizeCase{"OtherShape", "/MediaBox [0 0 100 100]", {77, 301}},
                    SizeCase{
                        "CropBeyondMedia", "/MediaBox [0 0 100 100] /CropBox [-50 -50 300 300]", {50, 50}},
                    SizeCase{"UserUnitDoesNotCount", "/MediaBox [0 0 100 100] /UserUnit 4", {100, 100}}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(PageRasteriser, PaperIsOpaqueWhiteUnderTransparentContent)
{
    const QByteArray file =
        onePage("/MediaBox [0 0 20 20] /Group << /S /Transparency /CS /DeviceRGB /I true >> "
                "/Resources << /ExtGState << /Half << /ca 0.5 >> >> >>",
                "/Half gs 1 0 0 rg 0 0 10 20 re f");
    const QImage image = drawn(file, {20, 20});
    EXPECT_EQ(image.pixel(15, 10), white);
    EXPECT_NEAR(qGreen(image.pixel(5, 10)), 128, 2);
    EXPECT_FALSE(image.hasAlphaChannel());
}

TEST(PageRasteriser, EdgesAreSmooth)
{
    const QImage image = drawn(onePage("/MediaBox [0 0 20 20]", "0 g 0 0 m 20 0 l 0 20 l f"), {20, 20});
    const QRgb edge = image.pixel(10, 10);
    EXPECT_GT(qRed(edge), 40);
    EXPECT_LT(qRed(edge), 215);
}

TEST(PageRasteriser, DrawsAFilledFieldButNoHiddenNote)
{
    const QByteArray fill =
        pdfStream("/Type /XObject /Subtype /Form /BBox [0 0 10 10]", "0 0 1 rg 0 0 10 10 re f");
    const QByteArray widget =
        "<< /Type /Annot /Subtype /Widget /FT /Tx /T (name) /V (Ada) /F 4 /Rect [0 0 10 10] "
        "/AP << /N 7 0 R >> >>";
    const QByteArray hidden =
        "<< /Type /Annot /Subtype /Square /F 2 /Rect [10 0 20 10] /AP << /N 7 0 R >> >>";
    const QByteArray file = onePage("/MediaBox [0 0 20 20] /Annots [5 0 R 6 0 R]", "", {widget, hidden, fill},
                                    "/AcroForm << /Fields [5 0 R] >>");
    const QImage image = drawn(file, {20, 20});
    EXPECT_EQ(image.pixel(5, 15), blue);
    EXPECT_EQ(image.pixel(15, 15), white);
}

TEST(PageRasteriser, LeavesHiddenLayersOut)
{
    const QByteArray file =
        onePage("/MediaBox [0 0 20 20] /Resources << /Properties << /Off 5 0 R /On 6 0 R >> >>",
                "/OC /Off BDC 1 0 0 rg 0 0 10 20 re f EMC /OC /On BDC 0 1 0 rg 10 0 10 20 re f EMC",
                {"<< /Type /OCG /Name (off) >>", "<< /Type /OCG /Name (on) >>"},
                "/OCProperties << /OCGs [5 0 R 6 0 R] /D << /Order [5 0 R 6 0 R] /OFF [5 0 R] >> >>");
    const QImage image = drawn(file, {20, 20});
    EXPECT_EQ(image.pixel(5, 10), white);
    EXPECT_EQ(image.pixel(15, 10), green);
}

// Sheared this far, it would be drawn into a bitmap of gigabytes.
TEST(PageRasteriser, APageWithAnImageBeyondAllBoundsIsNotDrawnWithoutIt)
{
    const QByteArray file = onePage("/MediaBox [0 0 400 400] /Resources << /XObject << /I 5 0 R >> >>",
                                    "q 399 65535 0 400 0 0 cm /I Do Q q 40 0 0 40 0 0 cm /I Do Q",
                                    {pdfStream("/Type /XObject /Subtype /Image /Width 1 /Height 1 "
                                               "/ColorSpace /DeviceGray /BitsPerComponent 8",
                                               QByteArray(1, '\0'))});
    EXPECT_EQ(drawn(file, {100, 100}).pixel(5, 95), qRgb(0, 0, 0));
    EXPECT_TRUE(drawn(file, {2000, 2000}).isNull());
}

TEST(PageRasteriser, StopsOnRequest)
{
    const QByteArray strokes = QByteArray("0 0 m 100 100 l S 100 0 m 0 100 l S\n").repeated(20000);
    const auto pages = PageRasteriser::open(onePage("/MediaBox [0 0 100 100]", strokes));
    ASSERT_TRUE(pages);
    std::stop_source stop;
    stop.request_stop();
    EXPECT_TRUE(pages->draw(0, {50, 50}, 0, stop.get_token()).isNull());
    EXPECT_FALSE(pages->draw(0, {50, 50}, 0).isNull()); // still fit for use
}

QByteArray form(const QByteArray& entries, const QByteArray& content)
{
    return pdfStream("/Type /XObject /Subtype /Form /BBox [0 0 100 100] " + entries, content);
}

/// The first page draws each form twice in the one before, forty deep; the second is marked.
QByteArray endlessPageBeforeAnother()
{
    QList<QByteArray> objects{
        "<< /Type /Catalog /Pages 2 0 R >>",
        "<< /Type /Pages /Kids [3 0 R 4 0 R] /Count 2 /MediaBox [0 0 100 100] >>",
        "<< /Type /Page /Parent 2 0 R /Contents 5 0 R /Resources << /XObject << /F 7 0 R >> >> >>",
        "<< /Type /Page /Parent 2 0 R /Contents 6 0 R >>",
        pdfStream({}, "/F Do"),
        pdfStream({}, "1 0 0 rg 0 0 100 100 re f")};
    for (int next = 8; next < 48; ++next)
        objects +=
            form("/Resources << /XObject << /F " + QByteArray::number(next) + " 0 R >> >>", "/F Do /F Do");
    return pdfOfObjects(objects + QList<QByteArray>{form({}, "0 0 9 9 re f")});
}

TEST(PageRasteriser, APageWithoutEndIsGivenUpAndTheOthersAreDrawn)
{
    const auto pages = PageRasteriser::open(endlessPageBeforeAnother());
    ASSERT_TRUE(pages);
    for (int round = 0; round < 2; ++round) {
        DrawingBudget budget(std::chrono::milliseconds(30), {});
        EXPECT_TRUE(pages->draw(0, {100, 100}, 0, budget).isNull());
        EXPECT_EQ(budget.end(), DrawingBudget::End::TimeIsUp);
        EXPECT_EQ(pages->draw(1, {100, 100}, 0).pixel(50, 50), red);
    }
}

struct HostileCase {
    const char* name;
    QByteArray content;
    QByteArray resource;
};

class PageRasteriserHostile : public testing::TestWithParam<HostileCase> {};

TEST_P(PageRasteriserHostile, IsGivenUpAtOnce)
{
    const auto& [name, content, resource] = GetParam();
    const QByteArray page =
        "/MediaBox [0 0 100 100] /Resources << /Pattern << /P 5 0 R >> /XObject << /X 5 0 R >> >>";
    const auto pages = PageRasteriser::open(onePage(page, content, {resource}));
    ASSERT_TRUE(pages);
    DrawingBudget budget(std::chrono::seconds(20), {});
    EXPECT_TRUE(pages->draw(0, {100, 100}, 0, budget).isNull());
    EXPECT_EQ(budget.end(), DrawingBudget::End::TooLarge);
}

/// As a filter unpacks it.
QByteArray packed(const QByteArray& text, int times)
{
    return qCompress(text.repeated(times)).mid(4); // without the length that Qt puts before it
}

const QByteArray tooMuch = packed(QByteArray(1 << 20, ' '), 257);
const QByteArray patternEntries = "/PatternType 1 /PaintType 1 /TilingType 1 /Resources << >> ";

INSTANTIATE_TEST_SUITE_P(
    Rows, PageRasteriserHostile,
    testing::Values(
        HostileCase{"NestedStates", QByteArray("q ").repeated(10'010), "null"},
        HostileCase{"FormThatUnpacksToTooMuch", "/X Do", form("/Filter /FlateDecode ", tooMuch)},
        HostileCase{
            "TilesWithoutNumber", "/Pattern cs /P scn 0 0 100 100 re f",
            pdfStream(patternEntries + "/BBox [0 0 1 1] /XStep 0.0001 /YStep 0.0001", "0 0 1 1 re f")},
        HostileCase{
            "ImageFarLargerThanThePage", "1000000 0 0 1000000 0 0 cm /X Do",
            pdfStream("/Subtype /Image /Width 1 /Height 1 /BitsPerComponent 8 /ColorSpace /DeviceGray",
                      "0")}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(PageRasteriser, DashesWithoutNumberBecomeALine)
{
    const QImage image =
        drawn(onePage("/MediaBox [0 0 20 20]", "4 w [0.00001] 0 d 0 10 m 20 10 l S"), {20, 20});
    EXPECT_EQ(image.pixel(10, 10), 0xff000000);
}

TEST(PageRasteriser, WhatCannotBeDrawnIsNull)
{
    const auto pages = PageRasteriser::open(markedPage(0));
    ASSERT_TRUE(pages);
    EXPECT_EQ(pages->pageCount(), 1);
    EXPECT_TRUE(pages->draw(-1, {10, 10}, 0).isNull());
    EXPECT_TRUE(pages->draw(1, {10, 10}, 0).isNull());
    EXPECT_TRUE(pages->draw(0, {0, 10}, 0).isNull());
    EXPECT_TRUE(pages->draw(0, {20000, 20000}, 0).isNull()); // above 1 GiB
}

TEST(PageRasteriser, GarbageIsNoDocument)
{
    EXPECT_FALSE(PageRasteriser::open(QByteArray()));
    EXPECT_FALSE(PageRasteriser::open(QByteArray("no document at all")));
    EXPECT_FALSE(PageRasteriser::open(QByteArray(100000, '\xa5')));
    EXPECT_FALSE(
        PageRasteriser::open(QByteArray("%PDF-1.7\ntrailer << /Root 1 0 R >>\nstartxref\n9\n%%EOF")));
}

class PageRasteriserOnAFile : public testing::Test {
protected:
    void write(const QByteArray& bytes)
    {
        QFile file(m_folder.filePath("a.pdf"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }
    std::unique_ptr<PageRasteriser> opened() const
    {
        return PageRasteriser::open(SourceFile::open(QUrl::fromLocalFile(m_folder.filePath("a.pdf"))));
    }
    QTemporaryDir m_folder;
};

TEST_F(PageRasteriserOnAFile, DrawsWhatTheBytesDraw)
{
    const QByteArray bytes = markedPage(90);
    write(bytes);
    const auto pages = opened();
    ASSERT_TRUE(pages);
    ASSERT_TRUE(QFile::remove(m_folder.filePath("a.pdf"))); // stays readable
    EXPECT_EQ(pages->draw(0, {40, 60}, 0), drawn(bytes, {40, 60}));
}

TEST_F(PageRasteriserOnAFile, APageOfAFileThatWasCutIsNotDrawnBlank)
{
    write(markedPage(0));
    const auto pages = opened();
    ASSERT_TRUE(pages);
    ASSERT_TRUE(QFile::resize(m_folder.filePath("a.pdf"), 100));
    EXPECT_TRUE(pages->draw(0, {60, 40}, 0).isNull());
}

} // namespace
} // namespace folvane::pdf
