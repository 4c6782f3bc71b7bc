#include "codes/links/LinkCheck.h"
#include "codes/links/brands.h"
#include "codes/links/hostNames.h"
#include "codes/links/punycode.h"
#include "codes/links/shorteners.h"

#include <algorithm>

namespace folvane {

namespace {

constexpr QLatin1String encodedMark("xn--");

bool isEncoded(QStringView label)
{
    return label.startsWith(encodedMark);
}

bool isAscii(const QString& text)
{
    return std::ranges::all_of(text, [](QChar c) { return c <= u'\u007F'; });
}

QString encoded(const QString& host)
{
    return QString::fromLatin1(QUrl::toAce(host));
}

/// The letters that a label stands for. It stays as it is when it does not decode, or only to what no name can hold and
/// what could turn the address around.
QString decodedLabel(QStringView label)
{
    if (!isEncoded(label))
        return label.toString();
    const std::optional<QString> decoded = decodePunycode(label.sliced(encodedMark.size()));
    return decoded && encoded(*decoded) == label ? *decoded : label.toString();
}

QString decodedHost(const QString& parsedHost)
{
    QStringList labels;
    for (const QStringView label : labelsOf(parsedHost))
        labels.append(decodedLabel(label));
    return labels.join(u'.');
}

/// The host in the letters that were printed, as long as they lead to the same place: a text can hold other hosts, and
/// characters that count for nothing can hide where a suffix begins.
QString readableHost(const QString& parsedHost, const QString& rawText, const PublicSuffixes& suffixes)
{
    QString decoded = decodedHost(parsedHost);
    const QString printed = printedHost(rawText).value_or(QString()).toLower();
    if (isAscii(printed) || encoded(printed) != parsedHost)
        return decoded;
    const auto site = [&suffixes](const QString& host) { return encoded(suffixes.registrableDomain(host)); };
    return site(printed) == site(decoded) ? printed : decoded;
}

QString displayAddress(const QUrl& url, const QString& parsedHost, const QString& host)
{
    QString address = url.toString(QUrl::FullyEncoded);
    const qsizetype start = address.indexOf(parsedHost, 0, Qt::CaseInsensitive);
    return start < 0 ? address : address.replace(start, parsedHost.size(), host);
}

QList<LinkWarning> warningsOf(const LinkCheck& check, const QString& parsedHost)
{
    using enum LinkWarning::Kind;
    const bool isNumeric = isNumericAddress(parsedHost);
    const bool isInternational = !isAscii(check.host) || std::ranges::any_of(labelsOf(parsedHost), isEncoded);
    const QString userName = check.url.userName(QUrl::FullyDecoded);
    QList<LinkWarning> warnings;
    if (check.url.scheme() == QLatin1String("http"))
        warnings.append({PlainHttp});
    if (isNumeric)
        warnings.append({IpAddress});
    if (!userName.isEmpty())
        warnings.append({UserInfo, userName});
    if (isInternational)
        warnings.append({hasMixedScripts(check.host) ? MixedScripts : InternationalName});
    if (shorteners().contains(check.realSite))
        warnings.append({Shortener});
    if (const auto brand = isNumeric ? std::nullopt : brandWarning(check.host, check.realSite))
        warnings.append(*brand);
    return warnings;
}

} // namespace

LinkCheck checkLink(const QUrl& url, const QString& rawText, const PublicSuffixes& suffixes)
{
    const QString parsedHost = url.host(QUrl::FullyEncoded).toLower();
    LinkCheck check;
    check.url = url;
    check.host = readableHost(parsedHost, rawText, suffixes);
    check.displayAddress = displayAddress(url, parsedHost, check.host);
    check.realSite = isNumericAddress(parsedHost) ? check.host : suffixes.registrableDomain(check.host);
    check.warnings = warningsOf(check, parsedHost);
    return check;
}

} // namespace folvane
