#include "codes/links/LinkCheck.h"
#include "codes/links/hostNames.h"
#include "codes/links/punycode.h"
#include "codes/links/shorteners.h"

#include <gtest/gtest.h>

namespace folvane {
namespace {

struct LinkCase {
    const char* name;
    const char* url;
    const char* rawText;
    const char* want; ///< address, real site and sentences
};

class Links : public testing::TestWithParam<LinkCase> {};

QString told(const LinkCheck& check)
{
    QStringList told{check.displayAddress, check.realSite};
    for (const LinkWarning& warning : check.warnings) {
        const QString sentence = sentenceOf(warning, check.realSite);
        told << (warning.name.isEmpty() ? sentence.section(u' ', 0, 1) : sentence);
    }
    return told.join(QStringLiteral(" | "));
}

TEST_P(Links, TellWhereTheyLead)
{
    const PublicSuffixes suffixes(
        "// a comment\n\n com \nCO.UK\nexample\nsite.example\n*.ck\n!www.ck\nрф\r\nly\n");
    const QUrl url(QString::fromUtf8(GetParam().url));
    EXPECT_EQ(told(checkLink(url, QString::fromUtf8(GetParam().rawText), suffixes)),
              QString::fromUtf8(GetParam().want));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, Links,
    testing::Values(
        LinkCase{"Brand", "https://www.paypal.example/x", "",
                 "https://www.paypal.example/x | paypal.example"},
        LinkCase{"PlainHttp", "http://example.com", "", "http://example.com | example.com | Not encrypted:"},
        LinkCase{"UserInfo", "https://%25%31@evil.example/", "https://%25%31@evil.example/",
                 "https://%251@evil.example/ | evil.example | “%1” is not the site. The real site is "
                 "evil.example."},
        LinkCase{"UserInfoThatTurnsTheLine", "https://a%E2%80%AEb%0A%E2%80%A8@evil.example/", "",
                 "https://a%E2%80%AEb%0A%E2%80%A8@evil.example/ | evil.example | “a�b��” is not the site. "
                 "The real site is evil.example."},
        LinkCase{"Lookalike", "https://paypa1.example", "",
                 "https://paypa1.example | paypa1.example | Looks like PayPal, but the real site is "
                 "paypa1.example."},
        LinkCase{"LookalikeByPairs", "https://vvalrnart.example", "",
                 "https://vvalrnart.example | vvalrnart.example | Looks like Walmart, but the real site is "
                 "vvalrnart.example."},
        LinkCase{"FirstBrandOfTheList", "https://wise-paypal.example.com", "",
                 "https://wise-paypal.example.com | example.com | The real site is example.com, not PayPal."},
        LinkCase{"PartOfAWord", "https://mypaypal.example.com", "",
                 "https://mypaypal.example.com | example.com"},
        LinkCase{"Shortener", "http://paypal@a.bit.ly", "",
                 "http://paypal@a.bit.ly | bit.ly | Not encrypted:"
                 " | “paypal” is not the site. The real site is bit.ly. | A short"},
        LinkCase{"Number", "http://192.168.0.1:8/", "",
                 "http://192.168.0.1:8/ | 192.168.0.1 | Not encrypted: | A bare"},
        LinkCase{"NumberInDisguise", "https://0x7f.1/", "", "https://127.0.0.1/ | 127.0.0.1 | A bare"},
        LinkCase{"Ipv6", "http://[::1]/", "", "http://[::1]/ | ::1 | Not encrypted: | A bare"},
        LinkCase{"MixedScripts", "https://xn--pple-43d.com/", "",
                 "https://аpple.com/ | аpple.com | Letters from"},
        LinkCase{"OneScript", "https://сайт.рф/", "", "https://сайт.рф/ | сайт.рф | Special characters"},
        LinkCase{"AsPrinted", "https://xn--bcher-kva.example/ä", "https://a@BüCHER.example:8/ä",
                 "https://bücher.example/%C3%A4 | bücher.example | Special characters"},
        LinkCase{"AsPrintedInOddLetters", "https://ａpple.example", "https://ａpple.example",
                 "https://ａpple.example | ａpple.example | Special characters"},
        LinkCase{"AnotherHostBehindIt", "https://www.evil.example/?://bücher.de",
                 "www.evil.example/?://bücher.de",
                 "https://www.evil.example/?://b%C3%BCcher.de | evil.example"},
        LinkCase{"SuffixInDisguise", "https://evil.site.example", "https://evil.ѕite.example",
                 "https://evil.site.example | evil.site.example"},
        LinkCase{"SuffixInDisguiseOfTheSameName", "https://evil.ｓite.example", "https://evil.ｓite.example",
                 "https://evil.site.example | evil.site.example"},
        LinkCase{"LabelThatDoesNotDecode", "https://xn--99999999.com", "",
                 "https://xn--99999999.com | xn--99999999.com | Special characters"},
        LinkCase{"LabelThatTurnsTheLine", "https://xn--xy-g4t.com", "",
                 "https://xn--xy-g4t.com | xn--xy-g4t.com | Special characters"},
        LinkCase{"LastDot", "https://a.EVIL%2Eco.uk./", "", "https://a.evil.co.uk/ | evil.co.uk"},
        LinkCase{"Wildcard", "https://x.a.b.ck", "", "https://x.a.b.ck | a.b.ck"},
        LinkCase{"WildcardWithoutMore", "https://b.ck", "", "https://b.ck | b.ck"},
        LinkCase{"Exception", "https://x.www.ck", "", "https://x.www.ck | www.ck"},
        LinkCase{"OneLabel", "https://localhost", "", "https://localhost | localhost"},
        LinkCase{"NoHost", "mailto:a@b.com", "", "mailto:a@b.com | "}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(Link, KnowsNoSiteWithoutAList)
{
    EXPECT_EQ(
        told(checkLink(QUrl("https://www.paypal.example"), {}, PublicSuffixes(""))),
        "https://www.paypal.example | www.paypal.example | The real site is www.paypal.example, not PayPal.");
}

TEST(Link, CutsALongUserName)
{
    const LinkWarning warning{LinkWarning::Kind::UserInfo, QStringLiteral("😀").repeated(1000)};
    EXPECT_EQ(sentenceOf(warning, "a.b"), QStringLiteral("“%1…” is not the site. The real site is a.b.")
                                              .arg(QStringLiteral("😀").repeated(40)));
}

TEST(Link, DecodesLabels)
{
    const QString longest(58, u'a');
    EXPECT_EQ(decodePunycode(QStringLiteral("BCHER-KVA")), QStringLiteral("BüCHER"));
    EXPECT_EQ(decodePunycode(QString("--a-")), QString("--a"));
    EXPECT_EQ(decodePunycode(QString(longest + u'-')), longest);
    EXPECT_EQ(decodePunycode(QString("dn32g")), QString::fromUcs4(U"\U0010FFFF"));
    for (const char* other :
         {"bücher-kva", "a-k!", "a-k", "a-99999999999999999999a", "ib9b", "zy0c", "en32g"})
        EXPECT_FALSE(decodePunycode(QString::fromUtf8(other))) << other;
    EXPECT_FALSE(decodePunycode(QString(longest + QString("a-"))));
}

TEST(Link, KnowsNumericAddresses)
{
    for (const char* numeric :
         {"1.2.3.4", "010.001.1.1", "+1.-0.00000000000000000001.255", "1..2.3.4.", "[", "a:b"})
        EXPECT_TRUE(isNumericAddress(QString(numeric))) << numeric;
    for (const char* other :
         {"", "256.1.1.1", "1.2.3", "1.2.3.4.5", "-1.2.3.4", "+.1.2.3", "1.2.3.99999999999999999999"})
        EXPECT_FALSE(isNumericAddress(QString(other))) << other;
}

TEST(Link, KnowsShortenersByWhatIsRegistered)
{
    EXPECT_EQ(shorteners().size(), 30);
    for (const QString& name : shorteners())
        EXPECT_EQ(PublicSuffixes::listed().registrableDomain(QStringLiteral("a.b.") + name), name);
}

} // namespace
} // namespace folvane
