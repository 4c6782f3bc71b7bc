#include "codes/links/LinkWarning.h"
#include "codes/links/brands.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>
#include <functional>
#include <string>

namespace folvane {

namespace {

// As the kinds are numbered.
constexpr std::array sentences{
    QT_TRANSLATE_NOOP("LinkWarning", "“%1” is not the site. The real site is %2."),
    QT_TRANSLATE_NOOP("LinkWarning", "Looks like %1, but the real site is %2."),
    QT_TRANSLATE_NOOP("LinkWarning", "The real site is %1, not %2."),
    QT_TRANSLATE_NOOP("LinkWarning", "Not encrypted: the address starts with http, not https."),
    QT_TRANSLATE_NOOP("LinkWarning", "A bare number instead of a site name."),
    QT_TRANSLATE_NOOP("LinkWarning",
                      "Letters from different alphabets: this address can imitate another site."),
    QT_TRANSLATE_NOOP("LinkWarning", "Special characters in the name can imitate another site."),
    QT_TRANSLATE_NOOP("LinkWarning", "A short link hides where it leads.")};

constexpr size_t longestQuote = 40;

bool staysInLine(char32_t c)
{
    const QChar::Category category = QChar::category(c);
    return QChar::isPrint(c) && category != QChar::Separator_Line && category != QChar::Separator_Paragraph;
}

/// What a stranger wrote, such that it neither pushes the real site out of sight nor turns the words around.
QString quoted(const QString& name)
{
    std::u32string shown = name.left(2 * qsizetype(longestQuote) + 2).toStdU32String();
    const bool isLong = shown.size() > longestQuote;
    shown.resize(std::min(shown.size(), longestQuote));
    std::ranges::replace_if(shown, std::not_fn(staysInLine), QChar::ReplacementCharacter);
    return QString::fromStdU32String(shown) + (isLong ? QStringLiteral("…") : QString());
}

} // namespace

QString sentenceOf(const LinkWarning& warning, const QString& realSite)
{
    const QString sentence = QCoreApplication::translate("LinkWarning", sentences[size_t(warning.kind)]);
    switch (warning.kind) {
    case LinkWarning::Kind::UserInfo: return sentence.arg(quoted(warning.name), realSite);
    case LinkWarning::Kind::Lookalike: return sentence.arg(brandName(warning.name), realSite);
    case LinkWarning::Kind::BrandInAddress: return sentence.arg(realSite, brandName(warning.name));
    case LinkWarning::Kind::PlainHttp:
    case LinkWarning::Kind::IpAddress:
    case LinkWarning::Kind::MixedScripts:
    case LinkWarning::Kind::InternationalName:
    case LinkWarning::Kind::Shortener: break;
    }
    return sentence;
}

} // namespace folvane
