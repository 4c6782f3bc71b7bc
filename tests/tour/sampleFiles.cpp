#include "tour/sampleFiles.h"

#include "platform/files/writeFile.h"
#include "support/madePdf.h"
#include "support/tools.h"
#include "tour/waiting.h"

#include <QColor>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QSize>

namespace folvane {

namespace {

constexpr QSize upright{595, 842};
constexpr QSize lying{842, 595};
constexpr int margin = 56;

/// A filled rectangle, measured from the top left of the page.
QString box(const QColor& color, const QRectF& area, const QSize& page)
{
    return QString::asprintf("%.2f %.2f %.2f rg %.2f %.2f %.2f %.2f re f\n", color.redF(), color.greenF(),
                             color.blueF(), area.x(), page.height() - area.bottom(), area.width(),
                             area.height());
}

/// A heading, on every third page a picture, and bars where lines of text would be.
QByteArray pageContent(const QString& word, int page, const QSize& size)
{
    const double width = size.width() - 2.0 * margin;
    const QColor color = QColor::fromHsv(page * 47 % 360, 80, 200);
    const bool hasPicture = page % 3 == 1;
    QString content = box(color, {margin, 60, width * 0.4, 6}, size);
    content += QString::asprintf("0.16 g BT /F1 27 Tf %d %d Td (%s %d) Tj ET\n", margin, size.height() - 112,
                                 qPrintable(word), page);
    if (hasPicture)
        content += box(color.lighter(130), {margin, 150, width, size.height() * 0.3}, size);
    for (int line = 0; line < 60; ++line) {
        const double top = (hasPicture ? 180 + size.height() * 0.3 : 160) + line * 16;
        const double share = line % 6 == 5 ? 0.55 : 0.94 + 0.015 * ((line * 7 + page) % 5);
        if (top < size.height() - margin)
            content += box(QColor(190, 188, 186), {margin, top, width * share, 5}, size);
    }
    return content.toLatin1();
}

} // namespace

QUrl makeSample(const QString& path, int pages, Paper paper, const QString& word)
{
    const QByteArray font = QByteArray::number(3 + 2 * pages); // behind the pages and their contents
    QList<MadePage> made;
    for (int page = 1; page <= pages; ++page) {
        const QSize size = paper == Paper::Mixed && page % 5 == 0 ? lying : upright;
        const QByteArray box = QByteArray::number(size.width()) + ' ' + QByteArray::number(size.height());
        made.append({pageContent(word, page, size),
                     "/Resources << /Font << /F1 " + font + " 0 R >> >> /MediaBox [0 0 " + box + "]"});
    }
    const QUrl url = QUrl::fromLocalFile(path);
    writeFile(url, pdfOfPages(made, {},
                              {"<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica-Bold "
                               "/Encoding /WinAnsiEncoding >>"}));
    return url;
}

QUrl makeLocked(const QString& path, const QString& password)
{
    const QString open = path + ".open";
    makeSample(open, 3);
    const ToolResult made = runTool("qpdf", {"--encrypt", password, password, "256", "--", open, path});
    if (made.exitCode != 0)
        throw TourFailed("qpdf could not lock a sample: " + QString::fromUtf8(made.errors));
    return QUrl::fromLocalFile(path);
}

QUrl makePicture(const QString& path)
{
    QImage picture(1200, 800, QImage::Format_RGB32);
    QLinearGradient sky(0, 0, 0, 800);
    sky.setColorAt(0, QColor(88, 140, 200));
    sky.setColorAt(1, QColor(250, 220, 180));
    QPainter painter(&picture);
    painter.fillRect(picture.rect(), sky);
    painter.setBrush(QColor(70, 96, 80));
    painter.drawPolygon(
        QPolygon{{0, 800}, {0, 560}, {380, 330}, {640, 600}, {900, 420}, {1200, 640}, {1200, 800}});
    painter.end();
    if (!picture.save(path))
        throw TourFailed(QStringLiteral("%1 cannot be written.").arg(path));
    return QUrl::fromLocalFile(path);
}

} // namespace folvane
