#include "documents/ModelTest.h"
#include "platform/files/writeFile.h"
#include "support/colourMiddle.h"
#include "support/madePdf.h"
#include "support/tools.h"
#include "tools/sign/PageArea.h"
#include "tools/sign/SignView.h"

#include <QBuffer>
#include <QPainter>
#include <QTest>

namespace folvane {
namespace {

constexpr QColor left(220, 30, 40), right(30, 40, 220), paper(128, 230, 128);
constexpr int longSide = 2000; // pixels

/// Pages for each rotation of their own and each turn, with crop boxes off the origin and every second user unit.
QByteArray turnedPages()
{
    QList<MadePage> pages;
    for (int i = 0; i < 16; ++i)
        pages.append({"0.5 0.9 0.5 rg 0 0 900 900 re f",
                      "/MediaBox [10 20 500 700] /CropBox [100 150 340 450] /Rotate "
                          + QByteArray::number(i / 4 * 90) + " /UserUnit " + QByteArray::number(1 + i % 2)});
    return pdfOfPages(pages);
}

StampMaker::Stamp twoColours()
{
    QImage picture(200, 100, QImage::Format_ARGB32);
    picture.fill(left);
    QPainter(&picture).fillRect(100, 0, 100, 100, right);
    QBuffer png;
    picture.save(&png, "PNG");
    return {png.data(), 200, 100};
}

/// What of the picture is page: as far as its colours reach.
QImage pageIn(const QImage& picture)
{
    QRect page;
    forEachPixelOf(picture, {left, right, paper},
                   [&page](const QPoint& place) { page |= QRect(place, place); });
    return picture.copy(page);
}

class SignedPages : public ModelTest {
protected:
    /// One stamp on each page, at all angles, some over the edges.
    OpenFilePtr stamped()
    {
        const QUrl url = QUrl::fromLocalFile(path("turned.pdf"));
        writeFile(url, turnedPages());
        const OpenFilePtr file = open({url});
        const StampRecord record = *model->stamps.add(twoColours(), "Two colours");
        std::vector<PageItem> pages = file->pages;
        for (size_t i = 0; i < pages.size(); ++i) {
            pages[i].turn = int(i % 4) * 90;
            StampPlacement placement;
            placement.stampID = record.id;
            placement.center = {0.15 + 0.05 * double(i), i % 3 == 0 ? 0.02 : 0.6};
            placement.width = 0.3;
            placement.rotation = 23.0 * double(i) - 180;
            pages[i].stamps = {placement};
        }
        file->pages = pages;
        return file;
    }
    /// What a person sees of each page.
    QList<QImage> shownPages(const OpenFilePtr& file)
    {
        SignView view(*model);
        view.setFile(file);
        view.show();
        constexpr int room = longSide + 2 * 28; // with its margins
        view.resize(view.size() + QSize(room, room) - view.pageArea().size());
        QList<QImage> pages;
        for (size_t i = 0; i < file->pages.value().size(); ++i) {
            runUntil([&view] { return !view.pageArea().pageRect().isEmpty(); });
            pages.append(pageIn(view.pageArea().grab().toImage()));
            QTest::keyClick(&view.pageArea(), Qt::Key_PageDown);
        }
        return pages;
    }
};

TEST_F(SignedPages, LookAsTheyWereShown)
{
    const OpenFilePtr file = stamped();
    const QList<QImage> seen = shownPages(file);
    saveAs(file, "signed.pdf");
    const QString side = QString::number(longSide);
    runTool("pdftoppm", {"-scale-to", side, "-cropbox", "-png", path("signed.pdf"), path("poppler")});
    runTool("mutool", {"draw", "-w", side, "-h", side, "-o", path("mupdf-%02d.png"), path("signed.pdf")});
    for (int page = 1; page <= seen.size(); ++page) {
        const QImage shown = seen[page - 1];
        EXPECT_NEAR(std::max(shown.width(), shown.height()), longSide, 2);
        for (const char* const reader : {"poppler", "mupdf"}) {
            const QImage saved(
                path(QStringLiteral("%1-%2.png").arg(reader).arg(page, 2, 10, QLatin1Char('0'))));
            ASSERT_NEAR(std::max(saved.width(), saved.height()), longSide, 2);
            const auto off = [&](const QList<QColor>& colours) {
                const QPointF way = middle(saved, colours) - middle(shown, colours);
                return std::max(std::abs(way.x()), std::abs(way.y())) * longSide; // pixels
            };
            EXPECT_LT(off({left, right}), 1) << reader << " on page " << page;
            EXPECT_LT(std::max(off({left}), off({right})), 2)
                << "half of it, whose inner edge Poppler rounds";
        }
    }
}

} // namespace
} // namespace folvane
