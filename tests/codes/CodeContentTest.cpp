#include "codes/contentJson.h"

#include <QJsonDocument>

#include <gmock/gmock.h>

namespace folvane::codes {

namespace {

struct Meaning {
    const char* payload;
    CodeContent want;
    CodeSymbology symbology = CodeSymbology::Qr;
};

std::string readable(const CodeContent& content)
{
    return QJsonDocument(contentJson(content)).toJson(QJsonDocument::Compact).toStdString();
}

QString meaningOf(const QString& payload)
{
    return contentJson(codeContent(payload, CodeSymbology::Qr))["kind"].toString();
}

} // namespace

TEST(CodeContent, SaysWhatPayloadsMean)
{
    using enum CodeSymbology;
    for (const auto& [payload, want, symbology] : std::initializer_list<Meaning>{
             {"9781234567890", Product{"9781234567890", ProductKind::Isbn}, Ean13},
             {"0123456789012", Product{"123456789012", ProductKind::UpcA}, Ean13},
             {"٤٠٠٦٣٨١٣٣٣٩٣١", Product{"٤٠٠٦٣٨١٣٣٣٩٣١", ProductKind::Ean13}, Ean13},
             {"9781234567890", Text{"9781234567890"}},
             {"123456789012", Text{"123456789012"}, Ean13},
             {" 01234565\n", Product{"01234565", ProductKind::UpcE}, UpcE},
             {"0123456", Text{"0123456"}, Ean8},
             {"wifi:s:Home;p:a\\;b;;", WiFi{"Home", "a;b", "", false}},
             {"WIFI:P:;H:TRUE;T:nopass;S:a\\:b\\\\", WiFi{"a:b\\", "", "nopass", true}},
             {"WIFI:P:x;;", Text{"WIFI:P:x;;"}},
             {"WIFI:\u0301S:x;;", Text{"WIFI:\u0301S:x;;"}}, // no colon that a person would see
             {"begin:vcard\nFN:Jane\n  Doe\\, PhD\nN:Roe;Jane",
              Contact{"begin:vcard\nFN:Jane\n  Doe\\, PhD\nN:Roe;Jane", "Jane Doe, PhD", {}, {}, {}}},
             {"BEGIN:VCARD\r\nFN:\r\nN:;Jane\r\nitem1.TEL:2\r\nORG:A;B;",
              Contact{"BEGIN:VCARD\r\nFN:\r\nN:;Jane\r\nitem1.TEL:2\r\nORG:A;B;", "Jane", {}, {}, "A B"}},
             {"BEGIN:VCARD\nORG:Acme", Text{"BEGIN:VCARD\nORG:Acme"}},
             {"MECARD:N:Doe,Jane;TEL:1;TEL:2;;",
              Contact{
                  "BEGIN:VCARD\r\nVERSION:3.0\r\nFN:Jane Doe\r\nN:Doe;Jane;;;\r\nTEL:1\r\nTEL:2\r\nEND:VCARD",
                  "Jane Doe",
                  {"1", "2"},
                  {},
                  {}}},
             {"MECARD:ORG:Acme;;", Text{"MECARD:ORG:Acme;;"}},
             {"x BEGIN:VEVENT\nSUMMARY:x", Text{"x BEGIN:VEVENT\nSUMMARY:x"}},
             {"BEGIN:VEVENT\nSUMMARY;X=1:a\\,b\nEND:VEVENT\nLOCATION:c", Event{"a,b", {}, {}, {}, false}},
             {"tel:", Phone{""}},
             {"SMSTO:1:a:b", Sms{"1", "a:b"}},
             {"sms:+123:hello?a=1&Body=x y%C3%A9+z", Sms{"+123:hello", "x yé+z"}},
             {"MAILTO:a%40b.c?SUBJECT=x", Email{"a@b.c", "x", {}}},
             {"mailto:100%@b.c?body=5%25&body=no#top", Email{"100%@b.c", {}, "5%"}},
             {"MATMSG:TO:a@b.c;SUB:s;BODY:x\\;y;;", Email{"a@b.c", "s", "x;y"}},
             {"geo:abc,10,20?Q=1&q=x", Location{10, 20, "x"}},
             {"geo:1,2;u=35?q", Location{1, 2, {}}},
             {"geo:91,0", Text{"geo:91,0"}},
             {"geo:nan,1,2", Text{"geo:nan,1,2"}},
             {"HTTP://Example.com/a|b%zz?ü", Link{QUrl("http://example.com/a%7Cb%25zz?%C3%BC")}},
             {"www.example.com:8080", Link{QUrl("https://www.example.com:8080")}},
             {"www.example.com/a b", Text{"www.example.com/a b"}},
             {"https://user@/x", Text{"https://user@/x"}},
             {"http://example.com:99999/", Text{"http://example.com:99999/"}},
             {"example.com", Text{"example.com"}},
             {"ftp://example.com", Text{"ftp://example.com"}},
             {"\u00A0\n ", Text{""}}}) {
        const CodeContent found = codeContent(payload, symbology);
        EXPECT_TRUE(found == want) << payload << "\nmeans " << readable(found);
    }
}

TEST(CodeContent, ReadsTimes)
{
    const QByteArray zoneBefore = qgetenv("TZ");
    qputenv("TZ", "Europe/Madrid");
    for (const auto& [line, start, isAllDay] :
         std::initializer_list<std::tuple<const char*, const char*, bool>>{
             {"DTSTART:20250102", "2025-01-01T23:00:00Z", true},
             {"DTSTART;TZID=Asia/Tokyo:20250702T030405", "2025-07-02T01:04:05Z", false},
             {"DTSTART;VALUE=DATE-TIME:20250102T030405Z", "2025-01-02T03:04:05Z", true},
             {"DTSTART:20251026T023000", "2025-10-26T01:30:00Z", false}, // comes twice
             {"DTSTART:20250330T023000", "", false},                     // never came
             {"DTSTART:15000301T000000Z", "1500-03-01T00:00:00Z", false},
             {"DTSTART:20250229", "", true},
             {"DTSTART:tomorrow", "", true}, // eight characters
             {"DTSTART:2025010", "", false}}) {
        const Event event = std::get<Event>(
            codeContent(QStringLiteral("BEGIN:VEVENT\nSUMMARY:x\n") + line, CodeSymbology::Aztec));
        EXPECT_EQ(event.start.value_or(QDateTime()).toString(Qt::ISODate), start) << line;
        EXPECT_EQ(event.isAllDay, isAllDay) << line;
    }
    zoneBefore.isNull() ? qunsetenv("TZ") : qputenv("TZ", zoneBefore);
}

TEST(CodeContent, HasATitleAndASymbol)
{
    EXPECT_THAT(std::pair(kindTitle(Sms()), systemImage(Sms())), testing::Pair("Message", "message"));
    EXPECT_EQ(systemImage(Product{"", ProductKind::Isbn}), "book");
    EXPECT_EQ(kindTitle(Product{"", ProductKind::UpcA}), "Product");
}

// What takes quadratic time for a megabyte does not end within the time of a test.
TEST(CodeContent, ReadsAMegabyte)
{
    for (const auto& [start, repeated, kind] :
         std::initializer_list<std::tuple<const char*, const char*, const char*>>{
             {"WIFI:S:x;", "P:;", "wifi"},
             {"BEGIN:VCARD\nFN:", "\\,\n a:\u0301", "contact"},
             {"MECARD:", "TEL:1;", "contact"},
             {"BEGIN:VEVENT\n", "DTSTART:20250102\n", "event"},
             {"sms:1?", "body&", "sms"},
             {"geo:1,", "2,", "location"},
             {"http://", "\u0301\u4e2d", "text"},
             {"http://a/", "İ%", "link"},
             {"", "ß", "text"}})
        EXPECT_EQ(meaningOf(start + QString(repeated).repeated(300'000)), kind) << start << repeated;
}

} // namespace folvane::codes
