#include "codes/content/Location.h"

#include "codes/content/Uri.h"
#include "codes/content/characters.h"

#include <QByteArray>

#include <cctype>
#include <clocale>
#include <cmath>
#include <cstdlib>

namespace folvane::codes {

namespace {

/// The text as a number, all of it; it may be an infinity, or none ("nan").
std::optional<double> number(QStringView text)
{
    static const locale_t anywhere = newlocale(LC_ALL_MASK, "C", nullptr);
    const QByteArray written = text.toUtf8();
    if (written.isEmpty() || std::isspace(static_cast<unsigned char>(written.front())))
        return std::nullopt;
    char* end = nullptr;
    const double value = strtod_l(written.constData(), &end, anywhere);
    return end == written.constEnd() ? std::optional(value) : std::nullopt;
}

QList<double> numbers(QStringView coordinates)
{
    QList<double> found;
    for (const QStringView piece : pieces(coordinates, u','))
        if (const std::optional<double> value = number(firstPiece(piece, u';')))
            found.append(*value);
    return found;
}

} // namespace

// 1. Numbers between commas, each up to its first semicolon; what is no number is passed over.
// 2. The first is the latitude and the second the longitude; both must be there and on earth.
// 3. Behind the first question mark stands a query, whose item "q", in lower case, tells what to look for.
std::optional<Location> location(QStringView text)
{
    const QStringView rest = withoutFirst(text, 4);
    const QList<QStringView> parts = pieces(rest, u'?', 1);
    const QList<double> found = numbers(parts.value(0, rest));
    if (found.size() < 2 || !(std::abs(found[0]) <= 90) || !(std::abs(found[1]) <= 180))
        return std::nullopt;
    const std::optional<Uri> uri = Uri::parse(QStringLiteral("geo:x?") + parts.value(1).toString());
    return Location{found[0], found[1], uri ? uri->value(u"q", Qt::CaseSensitive) : std::nullopt};
}

} // namespace folvane::codes
