#include "documents/pages/PageRanges.h"

#include <QStringList>

#include <algorithm>

namespace folvane::PageRanges {

namespace {

bool isBlank(QChar c)
{
    return c == u'\t' || c.category() == QChar::Separator_Space;
}

QStringView trimmed(QStringView text)
{
    while (!text.isEmpty() && isBlank(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && isBlank(text.back()))
        text.chop(1);
    return text;
}

/// The trimmed parts between any of the separators; parts that are empty before trimming are left out.
QList<QStringView> split(QStringView text, QStringView separators)
{
    QList<QStringView> parts;
    qsizetype start = 0;
    for (qsizetype end = 0; end <= text.size(); ++end) {
        if (end < text.size() && !separators.contains(text[end]))
            continue;
        if (end > start)
            parts.append(trimmed(text.sliced(start, end - start)));
        start = end + 1;
    }
    return parts;
}

/// A decimal integer of at most `limit`; 0 for anything else.
int number(QStringView text, int limit)
{
    if (text.startsWith(u'+'))
        text = text.sliced(1);
    qint64 value = 0;
    for (const QChar c : text) {
        if (c < u'0' || c > u'9')
            return 0;
        value = value * 10 + (c.unicode() - u'0');
        if (value > limit)
            return 0;
    }
    return static_cast<int>(value);
}

std::optional<PageRange> range(QStringView piece, int count)
{
    const QList<QStringView> parts = split(piece, u"-–—");
    if (parts.isEmpty() || parts.size() > 2)
        return std::nullopt;
    const PageRange range{number(parts.front(), count), number(parts.back(), count)};
    if (range.first < 1 || range.last < range.first)
        return std::nullopt;
    return range;
}

} // namespace

std::optional<QList<PageRange>> parse(const QString& text, int count)
{
    QList<PageRange> ranges;
    for (const QStringView piece : split(text, u",;")) {
        if (piece.isEmpty())
            continue;
        const std::optional<PageRange> one = range(piece, count);
        if (!one)
            return std::nullopt;
        ranges.append(*one);
    }
    if (ranges.isEmpty())
        return std::nullopt;
    return ranges;
}

QString describe(PageRange range)
{
    const QString first = QString::number(range.first);
    return range.last == range.first ? first : first + u'-' + QString::number(range.last);
}

QString describe(QList<int> pages)
{
    std::ranges::sort(pages);
    QStringList runs;
    for (qsizetype i = 0; i < pages.size();) {
        PageRange run{pages[i], pages[i]};
        for (++i; i < pages.size() && pages[i] - run.last <= 1; ++i)
            run.last = pages[i];
        runs.append(describe(run));
    }
    return runs.join(QStringLiteral(", "));
}

} // namespace folvane::PageRanges
