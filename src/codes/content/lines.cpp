#include "codes/content/lines.h"

#include "codes/content/characters.h"
#include "codes/content/letterCase.h"

namespace folvane::codes {

namespace {

bool isNewline(QChar c)
{
    return (c >= u'\n' && c <= u'\r') || c == u'\u0085' || c == u'\u2028' || c == u'\u2029';
}

} // namespace

// 1. Each newline code ends a line, so what stands between CR and LF is an empty one. Empty ones are left out.
// 2. A line that begins with a space or a tab goes on with the one before it, without that; the first line stands as it is.
QStringList unfoldedLines(QStringView text)
{
    QStringList lines;
    qsizetype start = 0;
    for (qsizetype end = 0; end <= text.size(); ++end) {
        if (end < text.size() && !isNewline(text[end]))
            continue;
        const QStringView line = text.sliced(start, end - start);
        start = end + 1;
        if (!lines.isEmpty() && (beginsWith(line, u" ") || beginsWith(line, u"\t")))
            lines.last() += line.sliced(1);
        else if (!line.isEmpty())
            lines.append(line.toString());
    }
    return lines;
}

std::optional<LineField> lineField(const QString& line)
{
    const qsizetype colon = indexOf(line, u':');
    if (colon < 0)
        return std::nullopt;
    return LineField{upperCase(QStringView(line).first(colon)),
                     line.sliced(colon + 1).replace(QLatin1String("\\,"), QLatin1String(","))};
}

} // namespace folvane::codes
