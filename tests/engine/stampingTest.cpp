#include "engine/EngineTest.h"
#include "support/colourMiddle.h"
#include "support/madePdf.h"
#include "support/tools.h"

#include <QTransform>

#include <cmath>
#include <tuple>

namespace folvane {
namespace {

/// The first page has text, a picture of a field and of a note, a hidden note and a link to the second, crop boxes off the
/// origin, and a destination at its upper left corner; the second leads back there.
QByteArray pageWithAll(int rotation, int userUnit)
{
    const QByteArray look = "/Type /XObject /Subtype /Form /BBox [0 0 50 20] ";
    return pdfOfPages(
        {{"0.8 1 0.8 rg 100 150 40 40 re f 0 g BT /F1 12 Tf 120 400 Td (On the first page) Tj ET q",
          "/MediaBox [10 20 500 700] /CropBox [100 150 300 450] /StructParents 0 /Rotate "
              + QByteArray::number(rotation) + " /UserUnit " + QByteArray::number(userUnit)
              + " /Annots [7 0 R 8 0 R 9 0 R 10 0 R]"},
         {shownText("Second"), "/Annots [11 0 R]"}},
        "/Dests << /corner [3 0 R /XYZ 100 450 null] >> /AcroForm << /Fields [7 0 R] >> /StructTreeRoot 13 0 "
        "R",
        {"<< /Subtype /Widget /FT /Tx /T (field) /V (x) /Rect [110 160 160 180] /F 4 /AP << /N 12 0 R >> >>",
         "<< /Subtype /Square /Rect [200 160 250 180] /F 4 /AP << /N 12 0 R >> >>",
         "<< /Subtype /Square /Rect [200 200 250 220] /F 2 /AP << /N 12 0 R >> >>",
         "<< /Subtype /Link /Border [0 0 0] /Rect [200 420 290 440] /Dest [4 0 R /Fit] >>",
         "<< /Subtype /Link /Border [0 0 0] /Rect [0 0 9 9] /Dest /corner >>",
         pdfStream(look, "0.3 0.3 0.6 rg 0 0 50 20 re f"),
         "<< /Type /StructTreeRoot /K [14 0 R 15 0 R] /ParentTree << /Nums [0 [14 0 R] 1 [15 0 R]] >> >>",
         "<< /S /P /T (Flat) /P 13 0 R /Pg 3 0 R /K 0 >>",
         "<< /S /P /T (Tagged) /P 13 0 R /Pg 4 0 R /K 0 >>"});
}

enum class Reader { Poppler, MuPdf };

QImage seen(const QString& pdf, Reader reader)
{
    const QString to = pdf + ".png";
    const ToolResult result =
        reader == Reader::Poppler
            ? runTool("pdftoppm", {"-r", "144", "-cropbox", "-png", "-singlefile", pdf, pdf})
            : runTool("mutool", {"draw", "-r", "144", "-o", to, pdf, "1"});
    EXPECT_EQ(result.exitCode, 0) << result.errors.constData();
    return QImage(to).convertToFormat(QImage::Format_RGB32);
}

/// The share of pixels that differ, further than `radius` (pixels) from the point.
double differing(const QImage& one, const QImage& other, QPointF away, double radius)
{
    int count = 0;
    for (int y = 0; y < one.height(); ++y)
        for (int x = 0; x < one.width(); ++x) {
            const QColor a = one.pixelColor(x, y), b = other.pixelColor(x, y);
            const int most = std::max({std::abs(a.red() - b.red()), std::abs(a.green() - b.green()),
                                       std::abs(a.blue() - b.blue())});
            count += most > 8 && std::hypot(x - away.x(), y - away.y()) > radius;
        }
    return double(count) / (one.width() * one.height());
}

} // namespace

class Stamps : public EngineTest {
protected:
    Stamps()
    {
        QImage picture(200, 100, QImage::Format_ARGB32);
        picture.fill(QColor(220, 30, 40));
        for (int y = 0; y < 100; ++y)
            for (int x = 100; x < 200; ++x)
                picture.setPixelColor(x, y, QColor(30, 40, 220));
        picture.save(path("stamp.png"));
        placement.stampID = QUuid::createUuid();
        placement.center = {0.4, 0.3};
        placement.width = 0.3;
        placement.rotation = 30;
    }
    BuildPlan plan(const QUrl& source, int turn)
    {
        BuildPlan plan;
        add(plan, source, {0}, turn);
        add(plan, source, {1});
        return plan;
    }
    BuildPlan stamped(BuildPlan plan)
    {
        plan.pages[0].stamps = {placement};
        plan.stampFiles = {{placement.stampID, QUrl::fromLocalFile(path("stamp.png"))}};
        return plan;
    }

    StampPlacement placement;
};

class StampsOnTurnedPages : public Stamps, public testing::WithParamInterface<std::tuple<int, int>> {};

TEST_P(StampsOnTurnedPages, LieWhereTheyAreSeenAndLeaveThePageAsItWas)
{
    const auto [own, turn] = GetParam();
    const int unit = own == turn ? 2 : 1;
    const BuildPlan pages = plan(opened("page.pdf", pageWithAll(own, unit)), turn);
    const QString plain = built(pages), flat = built(stamped(pages));
    EXPECT_EQ(faultsOf(flat), QByteArray());
    EXPECT_EQ(textOf(flat).simplified(), textOf(plain).simplified());
    for (const Reader reader : {Reader::Poppler, Reader::MuPdf}) {
        const QImage before = seen(plain, reader), after = seen(flat, reader);
        ASSERT_EQ(after.size(), before.size());
        const double width = placement.width * after.width();
        const QPointF center(placement.center.x() * after.width(), placement.center.y() * after.height());
        const QPointF quarter = QTransform().rotate(placement.rotation).map(QPointF(width / 4, 0));
        const QPointF red = middle(after, {QColor(220, 30, 40)}), blue = middle(after, {QColor(30, 40, 220)});
        EXPECT_NEAR(red.x() * after.width(), center.x() - quarter.x(), 1);
        EXPECT_NEAR(red.y() * after.height(), center.y() - quarter.y(), 1);
        EXPECT_NEAR(blue.x() * after.width(), center.x() + quarter.x(), 1);
        EXPECT_NEAR(blue.y() * after.height(), center.y() + quarter.y(), 1);
        EXPECT_LE(differing(before, after, center, 0.6 * width), 0.001);
    }
    const QByteArray corner = runTool("pdfinfo", {"-dests", flat}).output.simplified();
    const char* const corners[] = {"XYZ 0 300 null", "XYZ 300 200 null", "XYZ 200 0 null", "XYZ 0 0 null"};
    EXPECT_TRUE(corner.contains(corners[(own + turn) / 90 % 4])) << corner.constData();
}

INSTANTIATE_TEST_SUITE_P(Rows, StampsOnTurnedPages,
                         testing::Combine(testing::Values(0, 90, 180, 270), testing::Values(0, 90, 180, 270)),
                         [](const auto& row) {
                             return std::to_string(std::get<0>(row.param)) + "and"
                                    + std::to_string(std::get<1>(row.param));
                         });

TEST_F(Stamps, MakeOnlyTheirPagesFlat)
{
    const QUrl source = opened("page.pdf", pageWithAll(0, 1));
    const QString flat = built(stamped(plan(source, 0)));
    EXPECT_EQ(outsideView(flat)["link"], QStringList({"1>2", "2>1"}));
    EXPECT_TRUE(outsideView(flat)["field"].isEmpty());
    const QByteArray text = plainText(flat);
    EXPECT_FALSE(text.contains("/Widget") || text.contains("/AcroForm") || text.contains("/Square"));
    EXPECT_TRUE(text.contains("(Tagged)") && !text.contains("(Flat)"));
}

/// A field of 100 by 40 points without an appearance, and a colour that is seen there, counted from its lower left corner.
struct BareField {
    const char* entries;
    QPoint at;
    QColor colour;
};

const QColor red(255, 0, 0), blue(0, 0, 255);
const BareField bareFields[] = {
    {"/FT /Tx /V (Value) /BS << /W 4 >> /MK << /BC [1 0 0] /BG [0 0 1] >>", {2, 20}, red},
    {"/FT /Tx /V (Value) /MK << /BC [1 0 0] /BG [1 1 0] >>", {90, 20}, Qt::yellow},
    {"/FT /Tx /V (secret) /Ff 8192 /Border [0 0 4] /MK << /BC [1 0 0] >>", {98, 20}, red},
    {"/FT /Tx /BS << /W 4 /S /U >> /MK << /BC [1 0 0] >>", {50, 2}, red},
    {"/FT /Tx /BS << /W 4 /S /U >> /MK << /BC [1 0 0] >>", {50, 38}, Qt::white},
    {"/FT /Tx /BS << /W 4 /S /B >> /MK << /BC [1 0 0] /BG [0 0 1] >>", {50, 34}, Qt::white},
    {"/FT /Tx /BS << /W 4 /S /I >> /MK << /BC [1 0 0] /BG [0 0 1] >>", {50, 34}, QColor(128, 128, 128)},
    {"/FT /Tx /BS << /W 4 /S /D /D [20 20] >> /MK << /BC [1 0 0] >>", {12, 2}, red},
    {"/FT /Tx /BS << /W 4 /S /D /D [20 20] >> /MK << /BC [1 0 0] >>", {32, 2}, Qt::white},
    {"/FT /Tx /F 2 /BS << /W 4 >> /MK << /BC [1 0 0] /BG [0 0 1] >>", {50, 20}, Qt::white},
    {"/FT /Btn /AS /On /V /On /MK << /BG [0 0 1] /CA (n) >>", {50, 20}, Qt::black},
    {"/FT /Btn /AS /Off /MK << /BG [0 0 1] /CA (n) >>", {50, 20}, blue},
    {"/FT /Btn /Ff 32768 /AS /Off /BS << /W 4 >> /MK << /BC [1 0 0] >>", {50, 38}, red},
    {"/FT /Btn /Ff 32768 /AS /Off /BS << /W 4 >> /MK << /BC [1 0 0] >>", {2, 2}, Qt::white},
};

TEST_F(Stamps, LeaveWhatIsSeenOfFieldsWithoutAnAppearance)
{
    QList<QByteArray> fields;
    QByteArray kids;
    for (const BareField& field : bareFields) {
        const auto row = fields.size();
        kids += QByteArray::number(5 + row) + " 0 R ";
        fields << "<< /Subtype /Widget /T (" + QByteArray::number(row) + ") /DA (/F1 12 Tf 1 g) /Rect [100 "
                      + QByteArray::number(50 * row) + " 200 " + QByteArray::number(50 * row + 40) + "] "
                      + field.entries + " >>";
    }
    placement.center = {0.8, 0.3};
    BuildPlan plan;
    add(plan,
        opened("form.pdf", pdfOfPages({{"", "/Annots [" + kids + "]"}},
                                      "/AcroForm << /Fields [" + kids + "] >>", fields)),
        {0});
    const QString flat = built(stamped(plan));
    EXPECT_EQ(textOf(flat).simplified(), "■ ****** Value Value");
    for (const Reader reader : {Reader::Poppler, Reader::MuPdf}) {
        const QImage image = seen(flat, reader);
        for (size_t row = 0; row < std::size(bareFields); ++row) {
            const auto& [entries, at, colour] = bareFields[row];
            const QColor pixel = image.pixelColor(2 * (100 + at.x()), 2 * (800 - 50 * int(row) - at.y()));
            EXPECT_LT(std::abs(pixel.red() - colour.red()) + std::abs(pixel.green() - colour.green())
                          + std::abs(pixel.blue() - colour.blue()),
                      60)
                << entries << " " << pixel.name().toStdString();
        }
    }
}

TEST_F(Stamps, AreInTheFileOnceWithTheirOwnJpeg)
{
    const QUrl source = opened("pages.pdf", numberedPdf("a", 20));
    BuildPlan plan;
    for (int i = 0; i < 20; ++i)
        add(plan, source, {i});
    for (PageItem& one : plan.pages)
        one.stamps = {placement, placement};
    plan.stampFiles = {{placement.stampID, QUrl::fromLocalFile(path("stamp.png"))}};
    const QString stamped = built(plan);
    EXPECT_EQ(plainText(stamped).count("/Subtype /Image"), 2) << "the colours and their mask";
    EXPECT_TRUE(imagesIn(stamped)[0].contains("200   100  rgb     3   8  jpeg"));
    plan.pages[0].stamps[0].width = 0.05; // 30 points at 100 dpi
    plan.quality = CompressionStep{1000, 0.5, false};
    const QString small = built(plan);
    EXPECT_TRUE(imagesIn(small)[0].contains("42    21  rgb     3   8  jpeg"));
    EXPECT_EQ(plainText(small).count("/Subtype /Image"), 4);
    plan.stampFiles.clear();
    EXPECT_EQ(plainText(built(plan)).count("/Subtype /Image"), 0) << "flat, with nothing on it";
    const BuildPlan pictures = Stamps::stamped(Stamps::plan(source, 0));
    const QImage exported = QImage::fromData(engine.pictures(pictures, 72, false)[0]);
    EXPECT_NEAR(middle(exported, {QColor(220, 30, 40)}).y(), 0.28, 0.02);
}

} // namespace folvane
