#include "codes/content/Uri.h"

#include "codes/content/letterCase.h"

#include <QStringDecoder>

#include <algorithm>
#include <cctype>

namespace folvane::codes {

namespace {

bool isAsciiLetter(QChar c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

bool isScheme(QStringView text)
{
    const auto fits = [](QChar c) {
        return isAsciiLetter(c) || (c >= u'0' && c <= u'9') || QStringView(u"+-.").contains(c);
    };
    return !text.isEmpty() && isAsciiLetter(text.front()) && std::ranges::all_of(text, fits);
}

/// What stands before the mark, or all.
QStringView upTo(QStringView text, QChar mark)
{
    const qsizetype at = text.indexOf(mark);
    return at < 0 ? text : text.first(at);
}

/// What stands behind the mark, or nothing.
std::optional<QStringView> behind(QStringView text, QChar mark)
{
    const qsizetype at = text.indexOf(mark);
    return at < 0 ? std::nullopt : std::optional(text.sliced(at + 1));
}

QStringView withoutAuthority(QStringView text)
{
    if (!text.startsWith(u"//"))
        return text;
    const qsizetype end = text.indexOf(u'/', 2);
    return end < 0 ? QStringView() : text.sliced(end);
}

QString decodedOrAsWritten(QStringView text)
{
    return percentDecoded(text).value_or(text.toString());
}

QList<Uri::Item> itemsOf(QStringView query)
{
    QList<Uri::Item> items;
    for (const QStringView item : query.split(u'&')) {
        const std::optional<QStringView> value = behind(item, u'=');
        items.append({decodedOrAsWritten(upTo(item, u'=')),
                      value ? std::optional(decodedOrAsWritten(*value)) : std::nullopt});
    }
    return items;
}

} // namespace

// scheme ":" ["//" authority] path ["?" query] ["#" fragment]
//
// 1. The scheme is a letter and then letters, digits, "+", "-" and "."; without one the text is refused.
// 2. The fragment begins at the first "#", the query at the first "?" before it; authority and fragment do not matter here.
// 3. The query is items between "&", an item a name and, behind the first "=", a value.
// 4. Codes are made carelessly: blanks and letters that should have been encoded stand for themselves, and so does
//    a name or a value that does not decode.
std::optional<Uri> Uri::parse(QStringView text)
{
    const QStringView scheme = upTo(text, u':');
    if (scheme.size() == text.size() || !isScheme(scheme))
        return std::nullopt;
    const QStringView rest = upTo(text.sliced(scheme.size() + 1), u'#');
    const std::optional<QStringView> query = behind(rest, u'?');
    return Uri{withoutAuthority(upTo(rest, u'?')).toString(), query ? itemsOf(*query) : QList<Item>()};
}

std::optional<QString> Uri::value(QStringView name, Qt::CaseSensitivity sensitivity) const
{
    const auto found = std::ranges::find_if(items, [&](const Item& item) {
        return (sensitivity == Qt::CaseSensitive ? item.name : lowerCase(item.name)) == name;
    });
    return found == items.end() ? std::nullopt : found->value;
}

std::optional<QString> percentDecoded(QStringView text)
{
    if (!text.contains(u'%'))
        return text.toString();
    const auto isHexadecimal = [](char c) { return std::isxdigit(static_cast<unsigned char>(c)) != 0; };
    const QByteArray encoded = text.toUtf8();
    for (qsizetype at = encoded.indexOf('%'); at >= 0; at = encoded.indexOf('%', at + 1))
        if (at + 2 >= encoded.size() || !isHexadecimal(encoded[at + 1]) || !isHexadecimal(encoded[at + 2]))
            return std::nullopt;
    QStringDecoder decoder(QStringDecoder::Utf8,
                           QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
    const QString decoded = decoder(QByteArray::fromPercentEncoding(encoded));
    return decoder.hasError() ? std::nullopt : std::optional(decoded);
}

} // namespace folvane::codes
