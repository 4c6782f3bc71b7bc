#include "pdf/drawing/PageRasteriser.h"

#include "pdf/madeImages.h"
#include "support/madePdf.h"

#include <gtest/gtest.h>

namespace folvane::pdf {
namespace {

constexpr QRgb white = 0xffffffff, red = 0xffff0000, blue = 0xff0000ff, black = 0xff000000;

/// `more` begins with object 5.
QByteArray onePage(const QByteArray& pageEntries, const QByteArray& content,
                   const QList<QByteArray>& more = {}, const QByteArray& catalogueEntries = {})
{
    return pdfOfPages({{content, pageEntries}}, catalogueEntries, more);
}

QImage drawn(const QByteArray& file, QSize pixels)
{
    const auto pages = PageRasteriser::open(file);
    return pages ? pages->draw(0, pixels, 0) : QImage();
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

const SizeCase sizes[] = {{"Letter", "/MediaBox [0 0 612 792]", {278, 360}},
                          {"OddFractions", "/MediaBox [0 0 419.528 595.276]", {1409, 2000}},
                          {"OnePointEnlarged", "/MediaBox [0 0 1 1]", {360, 360}},
                          {"Sliver", "/MediaBox [0 0 1 14400]", {1, 360}},
                          {"OtherShape", "/MediaBox [0 0 100 100]", {77, 301}},
                          {"CropBeyondMedia", "/MediaBox [0 0 100 100] /CropBox [-50 -50 300 300]", {50, 50}},
                          {"UserUnitDoesNotCount", "/MediaBox [0 0 100 100] /UserUnit 4", {100, 100}}};

INSTANTIATE_TEST_SUITE_P(Rows, PageRasteriserSizes, testing::ValuesIn(sizes),
                         [](const auto& row) { return std::string(row.param.name); });

/// A page of 20 by 20 points, and the colours in the middle of its lower quarters.
struct LookCase {
    const char* name;
    QByteArray entries;
    QByteArray content;
    QRgb left, right;
    QList<QByteArray> more = {}; ///< from object 5 on
    QByteArray catalogue = {};
};

class PageRasteriserLooks : public testing::TestWithParam<LookCase> {};

TEST_P(PageRasteriserLooks, AreThoseOfThePage)
{
    const LookCase& row = GetParam();
    const QImage image = drawn(
        onePage("/MediaBox [0 0 20 20] " + row.entries, row.content, row.more, row.catalogue), {20, 20});
    EXPECT_FALSE(image.hasAlphaChannel());
    for (const auto& [x, colour] : {std::pair(5, row.left), std::pair(15, row.right)}) {
        EXPECT_NEAR(qRed(image.pixel(x, 15)), qRed(colour), 2) << x;
        EXPECT_NEAR(qGreen(image.pixel(x, 15)), qGreen(colour), 2) << x;
        EXPECT_NEAR(qBlue(image.pixel(x, 15)), qBlue(colour), 2) << x;
    }
}

const LookCase looks[] = {
    {"PaperIsWhiteUnderTransparency",
     "/Group << /S /Transparency /CS /DeviceRGB /I true >> /Resources << /ExtGState << /Half << /ca 0.5 >> "
     ">> >>",
     "/Half gs 1 0 0 rg 0 0 10 20 re f", qRgb(255, 128, 128), white},
    {"FieldsShowAndHiddenNotesDoNot",
     "/Annots [5 0 R 6 0 R]",
     {},
     blue,
     white,
     {"<< /Type /Annot /Subtype /Widget /FT /Tx /T (name) /V (Ada) /F 4 /Rect [0 0 10 10] /AP << /N 7 0 R >> "
      ">>",
      "<< /Type /Annot /Subtype /Square /F 2 /Rect [10 0 20 10] /AP << /N 7 0 R >> >>",
      pdfStream("/Type /XObject /Subtype /Form /BBox [0 0 10 10]", "0 0 1 rg 0 0 10 10 re f")},
     "/AcroForm << /Fields [5 0 R] >>"},
    {"DashesWithoutNumberBecomeALine", {}, "40 w [0.00001] 0 d 0 10 m 20 10 l S", black, black}};

INSTANTIATE_TEST_SUITE_P(Rows, PageRasteriserLooks, testing::ValuesIn(looks),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(PageRasteriser, EdgesAreSmooth)
{
    const QImage image = drawn(onePage("/MediaBox [0 0 20 20]", "0 g 0 0 m 20 0 l 0 20 l f"), {20, 20});
    EXPECT_GT(qRed(image.pixel(10, 10)), 40);
    EXPECT_LT(qRed(image.pixel(10, 10)), 215);
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
    QList<QByteArray> forms;
    for (int next = 8; next < 48; ++next)
        forms << form("/Resources << /XObject << /F " + QByteArray::number(next) + " 0 R >> >>",
                      "/F Do /F Do");
    return pdfOfPages({{"/F Do", "/MediaBox [0 0 100 100] /Resources << /XObject << /F 7 0 R >> >>"},
                       {"1 0 0 rg 0 0 600 800 re f"}},
                      {}, forms << form({}, "0 0 9 9 re f"));
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

const QByteArray tiles = "/PatternType 1 /PaintType 1 /TilingType 1 /Resources << >> /BBox [0 0 1 1] ";

const HostileCase hostile[] = {
    {"NestedStates", QByteArray("q ").repeated(10'010), "null"},
    {"FormThatUnpacksToTooMuch", "/X Do",
     form("/Filter /FlateDecode ", deflatedBytes(QByteArray(257 << 20, ' ')))},
    {"TilesWithoutNumber", "/Pattern cs /P scn 0 0 100 100 re f",
     pdfStream(tiles + "/XStep 0.0001 /YStep 0.0001", "0 0 1 1 re f")},
    {"ImageFarLargerThanThePage", "1000000 0 0 1000000 0 0 cm /X Do",
     pdfStream("/Subtype /Image /Width 1 /Height 1 /BitsPerComponent 8 /ColorSpace /DeviceGray", "0")}};

INSTANTIATE_TEST_SUITE_P(Rows, PageRasteriserHostile, testing::ValuesIn(hostile),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(PageRasteriser, WhatCannotBeDrawnIsNull)
{
    const auto pages = PageRasteriser::open(onePage({}, {}));
    ASSERT_TRUE(pages);
    for (const auto& [page, size] : {std::pair(-1, QSize(10, 10)), std::pair(1, QSize(10, 10)),
                                     std::pair(0, QSize(0, 10)), std::pair(0, QSize(20000, 20000))})
        EXPECT_TRUE(pages->draw(page, size, 0).isNull()) << page << " at " << size.width();
}

TEST(PageRasteriser, GarbageIsNoDocument)
{
    for (const QByteArray& garbage : {QByteArray(), QByteArray(100000, '\xa5'),
                                      QByteArray("%PDF-1.7\ntrailer << /Root 1 0 R >>\nstartxref\n9\n%%EOF")})
        EXPECT_FALSE(PageRasteriser::open(garbage));
}

} // namespace
} // namespace folvane::pdf
