#include "codes/links/brands.h"
#include "codes/links/hostNames.h"

#include <QHash>

#include <algorithm>
#include <array>
#include <utility>

namespace folvane {

namespace {

// Where several fit, the first is told.
constexpr std::array<QStringView, 50> brands{
    u"paypal",    u"apple",        u"icloud",        u"google",    u"gmail",     u"microsoft", u"outlook",
    u"office365", u"amazon",       u"netflix",       u"facebook",  u"instagram", u"whatsapp",  u"telegram",
    u"tiktok",    u"linkedin",     u"twitter",       u"spotify",   u"adobe",     u"dropbox",   u"ebay",
    u"walmart",   u"mercadolibre", u"mercadopago",   u"dhl",       u"fedex",     u"ups",       u"usps",
    u"correos",   u"santander",    u"bbva",          u"caixabank", u"sabadell",  u"bankinter", u"ing",
    u"chase",     u"wellsfargo",   u"bankofamerica", u"citibank",  u"hsbc",      u"barclays",  u"revolut",
    u"wise",      u"coinbase",     u"binance",       u"steam",     u"banorte",   u"banamex",   u"bancomer",
    u"hacienda"};

using Row = std::pair<QStringView, QStringView>;
constexpr std::array brandNames{Row{u"paypal", u"PayPal"},
                                Row{u"icloud", u"iCloud"},
                                Row{u"whatsapp", u"WhatsApp"},
                                Row{u"tiktok", u"TikTok"},
                                Row{u"linkedin", u"LinkedIn"},
                                Row{u"office365", u"Office 365"},
                                Row{u"ebay", u"eBay"},
                                Row{u"mercadolibre", u"Mercado Libre"},
                                Row{u"mercadopago", u"Mercado Pago"},
                                Row{u"dhl", u"DHL"},
                                Row{u"fedex", u"FedEx"},
                                Row{u"ups", u"UPS"},
                                Row{u"usps", u"USPS"},
                                Row{u"bbva", u"BBVA"},
                                Row{u"ing", u"ING"},
                                Row{u"hsbc", u"HSBC"},
                                Row{u"caixabank", u"CaixaBank"},
                                Row{u"wellsfargo", u"Wells Fargo"},
                                Row{u"bankofamerica", u"Bank of America"}};

QHash<QStringView, size_t> numbered()
{
    QHash<QStringView, size_t> places;
    for (size_t place = 0; place < brands.size(); ++place)
        places.insert(brands[place], place);
    return places;
}

/// Its place in the list; the size of the list for a word that is no brand.
size_t placeOf(QStringView word)
{
    static const QHash<QStringView, size_t> places = numbered();
    return places.value(word, brands.size());
}

bool isBrand(QStringView word)
{
    return placeOf(word) < brands.size();
}

/// Of the words between dots and hyphens.
std::optional<QString> firstBrandIn(const QString& host)
{
    size_t first = brands.size();
    for (const QStringView label : labelsOf(host))
        for (const QStringView word : label.split(u'-', Qt::SkipEmptyParts))
            first = std::min(first, placeOf(word));
    return first < brands.size() ? std::optional(brands[first].toString()) : std::nullopt;
}

/// As a hasty reader takes it.
QString readHastily(QString label)
{
    label.replace(QLatin1String("rn"), QLatin1String("m")).replace(QLatin1String("vv"), QLatin1String("w"));
    constexpr std::array<std::pair<char16_t, char16_t>, 5> lookalikes{
        {{u'0', u'o'}, {u'1', u'l'}, {u'3', u'e'}, {u'5', u's'}, {u'$', u's'}}};
    for (const auto& [written, read] : lookalikes)
        label.replace(QChar(written), QChar(read));
    return label;
}

} // namespace

QString brandName(const QString& word)
{
    const auto* const found = std::ranges::find(brandNames, QStringView(word), &Row::first);
    return found != brandNames.end() ? found->second.toString() : word.left(1).toUpper() + word.mid(1);
}

std::optional<LinkWarning> brandWarning(const QString& host, const QString& realSite)
{
    const QStringView siteLabel = labelsOf(realSite).value(0, realSite);
    if (isBrand(siteLabel))
        return std::nullopt;
    if (const std::optional<QString> brand = firstBrandIn(host))
        return LinkWarning{LinkWarning::Kind::BrandInAddress, *brand};
    const QString read = readHastily(siteLabel.toString());
    if (read != siteLabel && isBrand(read))
        return LinkWarning{LinkWarning::Kind::Lookalike, read};
    return std::nullopt;
}

} // namespace folvane
