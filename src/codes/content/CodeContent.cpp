#include "codes/content/CodeContent.h"

#include "codes/content/characters.h"
#include "codes/content/letterCase.h"
#include "codes/content/trimmed.h"

#include <QCoreApplication>

#include <array>

namespace folvane {

namespace {

using namespace codes;

Phone phone(QStringView text)
{
    return {withoutFirst(text, 4).toString()};
}

template <auto parser>
std::optional<CodeContent> read(QStringView text)
{
    return parser(text);
}

bool contains(QStringView text, QStringView part)
{
    return text.contains(part);
}

/// A text whose upper case has the mark where `has` looks for it is read so, unless that gives nothing.
struct Rule {
    bool (*has)(QStringView text, QStringView mark);
    QStringView mark;
    std::optional<CodeContent> (*parse)(QStringView text);
};

/// The first that fits counts.
constexpr std::array rules{
    Rule{beginsWith, u"WIFI:", read<wifi>},
    Rule{beginsWith, u"BEGIN:VCARD", read<contactFromVCard>},
    Rule{beginsWith, u"MECARD:", read<contactFromMeCard>},
    Rule{contains, u"BEGIN:VEVENT", read<event>},
    Rule{beginsWith, u"TEL:", read<phone>},
    Rule{beginsWith, u"SMSTO:", read<sms>},
    Rule{beginsWith, u"SMS:", read<sms>},
    Rule{beginsWith, u"MAILTO:", read<emailFromUri>},
    Rule{beginsWith, u"MATMSG:", read<emailFromFields>},
    Rule{beginsWith, u"GEO:", read<location>},
    Rule{beginsWith, u"", read<webLink>},
};

struct Kind {
    const char* title;
    const char* image;
};

constexpr Kind book{QT_TRANSLATE_NOOP("CodeContent", "Book"), "book"};

/// In the order of CodeContent.
constexpr std::array kinds{
    Kind{QT_TRANSLATE_NOOP("CodeContent", "Link"), "link"},
    Kind{QT_TRANSLATE_NOOP("CodeContent", "Wi-Fi"), "wifi"},
    Kind{QT_TRANSLATE_NOOP("CodeContent", "Contact"), "person.crop.circle"},
    Kind{QT_TRANSLATE_NOOP("CodeContent", "Event"), "calendar"},
    Kind{QT_TRANSLATE_NOOP("CodeContent", "Phone"), "phone"},
    Kind{QT_TRANSLATE_NOOP("CodeContent", "Message"), "message"},
    Kind{QT_TRANSLATE_NOOP("CodeContent", "Email"), "envelope"},
    Kind{QT_TRANSLATE_NOOP("CodeContent", "Location"), "mappin.and.ellipse"},
    Kind{QT_TRANSLATE_NOOP("CodeContent", "Product"), "barcode"},
    Kind{QT_TRANSLATE_NOOP("CodeContent", "Text"), "text.alignleft"},
};
static_assert(kinds.size() == std::variant_size_v<CodeContent>);

const Kind& kindOf(const CodeContent& content)
{
    const Product* product = std::get_if<Product>(&content);
    return product && product->kind == ProductKind::Isbn ? book : kinds[content.index()];
}

} // namespace

CodeContent codeContent(const QString& payload, CodeSymbology symbology)
{
    const QStringView text = trimmed(payload, isBlankOrNewline);
    if (const std::optional<Product> found = product(text, symbology))
        return *found;
    const QString upper = upperCase(text);
    for (const Rule& rule : rules)
        if (rule.has(upper, rule.mark))
            if (std::optional<CodeContent> found = rule.parse(text))
                return *std::move(found);
    return Text{text.toString()};
}

QString kindTitle(const CodeContent& content)
{
    return QCoreApplication::translate("CodeContent", kindOf(content).title);
}

QString systemImage(const CodeContent& content)
{
    return QString::fromLatin1(kindOf(content).image);
}

} // namespace folvane
