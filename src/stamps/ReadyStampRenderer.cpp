#include "stamps/ReadyStampRenderer.h"

#include "platform/texts/localeTexts.h"
#include "stamps/stampPng.h"

#include <QCryptographicHash>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QGlyphRun>
#include <QPainter>
#include <QPainterPath>
#include <QRawFont>
#include <QTextLayout>

#include <cmath>

namespace folvane::ReadyStampRenderer {

namespace {

// In pixels.
constexpr int wordSize = 150, smallSize = 78, aloneSize = 120;
constexpr double kerningOfSize = 0.06;
constexpr double besideText = 140, aboveAndBelowText = 112, betweenLines = 26, aboveText = 56;

struct Border {
    double inset;
    double radius;
    double width;
};
constexpr Border outer{10, 34, 14}, inner{32, 20, 5};

struct Line {
    QPainterPath letters; ///< from the left end of the baseline
    double width = 0;
    double ascent = 0;
    double descent = 0;
};

/// The interface font, which stands in the program. Letters that it lacks come from the system's.
QFont stampFont(int size)
{
    static const QStringList families = QFontDatabase::applicationFontFamilies(
        QFontDatabase::addApplicationFont(QStringLiteral(":/fonts/Inter-Bold.otf")));
    QFont font(families);
    font.setPixelSize(size);
    font.setBold(true);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setLetterSpacing(QFont::AbsoluteSpacing, kerningOfSize * size);
    return font;
}

/// Outlines, since what a system does to pixels of letters differs from one to the next.
QPainterPath outlines(const QTextLine& line)
{
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    for (const QGlyphRun& run : line.glyphRuns()) {
        const QList<quint32> glyphs = run.glyphIndexes();
        const QList<QPointF> positions = run.positions();
        for (qsizetype i = 0; i < glyphs.size(); ++i)
            path.addPath(run.rawFont().pathForGlyph(glyphs[i]).translated(positions[i]));
    }
    return path.translated(0, -line.ascent());
}

Line lineOf(const QString& text, int size)
{
    const QFont font = stampFont(size);
    QTextLayout layout(text, font);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    layout.endLayout();
    const QFontMetricsF metrics(font);
    return {outlines(line), line.cursorToX(int(text.size())), metrics.ascent(), metrics.descent()};
}

std::vector<Line> linesOf(const QString& word, const QString& date)
{
    std::vector<Line> lines;
    if (!word.isEmpty())
        lines.push_back(lineOf(word, wordSize));
    if (!date.isEmpty())
        lines.push_back(lineOf(date, word.isEmpty() ? aloneSize : smallSize));
    return lines;
}

QSize canvasSize(const std::vector<Line>& lines)
{
    double width = 0, height = aboveAndBelowText + betweenLines * double(lines.size() - 1);
    for (const Line& line : lines) {
        width = std::max(width, line.width);
        height += line.ascent + line.descent;
    }
    return {int(std::ceil(width + besideText)), int(std::ceil(height))};
}

void drawBorder(QPainter& painter, QSize canvas, const Border& border)
{
    const double inset = border.inset;
    painter.setPen(QPen(painter.brush(), border.width));
    painter.save();
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(QPointF(), canvas).adjusted(inset, inset, -inset, -inset), border.radius,
                            border.radius);
    painter.restore();
}

void drawLines(QPainter& painter, QSize canvas, const std::vector<Line>& lines)
{
    painter.setPen(Qt::NoPen);
    double y = aboveText;
    for (const Line& line : lines) {
        y += line.ascent;
        painter.drawPath(line.letters.translated((canvas.width() - line.width) / 2, y));
        y += line.descent + betweenLines;
    }
}

} // namespace

std::optional<StampMaker::Stamp> render(const QString& word, const QString& date, StampInk ink)
{
    const std::vector<Line> lines = linesOf(word, date);
    if (lines.empty())
        return std::nullopt;
    QImage canvas(canvasSize(lines), QImage::Format_ARGB32_Premultiplied);
    if (canvas.isNull())
        return std::nullopt;
    canvas.fill(Qt::transparent);
    QPainter painter(&canvas);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(colorOf(ink));
    drawBorder(painter, canvas.size(), outer);
    drawBorder(painter, canvas.size(), inner);
    drawLines(painter, canvas.size(), lines);
    painter.end();
    const QByteArray png = pngOf(canvas);
    return png.isEmpty() ? std::nullopt
                         : std::optional(StampMaker::Stamp{png, canvas.width(), canvas.height()});
}

QUuid stampID(const QString& word, const QString& date, StampInk ink)
{
    const QString content = QStringLiteral("ready|%1|%2|%3").arg(word, date, rawText(ink));
    QByteArray bytes = QCryptographicHash::hash(content.toUtf8(), QCryptographicHash::Sha256).first(16);
    bytes[6] = char((uchar(bytes[6]) & 0x0F) | 0x50);
    bytes[8] = char((uchar(bytes[8]) & 0x3F) | 0x80);
    return QUuid::fromRfc4122(bytes);
}

QString today()
{
    return abbreviatedDate(QDate::currentDate());
}

} // namespace folvane::ReadyStampRenderer
