#include "contentJson.h"

#include "codes/reading/symbologies.h"

#include <QJsonArray>

#include <array>

namespace folvane {

namespace {

using namespace codes;

QJsonValue told(const std::optional<QString>& text)
{
    return text ? QJsonValue(*text) : QJsonValue();
}

QJsonValue told(const std::optional<QDateTime>& time)
{
    return time ? QJsonValue(time->toString(Qt::ISODate)) : QJsonValue();
}

QJsonObject fields(const Link& link)
{
    return {{"url", link.url.toString(QUrl::FullyEncoded)}};
}

QJsonObject fields(const WiFi& wifi)
{
    return {{"ssid", wifi.ssid},
            {"password", told(wifi.password)},
            {"security", wifi.security},
            {"isHidden", wifi.isHidden}};
}

QJsonObject fields(const Contact& contact)
{
    return {{"vCard", contact.vCard},
            {"name", told(contact.name)},
            {"phones", QJsonArray::fromStringList(contact.phones)},
            {"emails", QJsonArray::fromStringList(contact.emails)},
            {"organization", told(contact.organization)}};
}

QJsonObject fields(const Event& event)
{
    return {{"title", told(event.title)},
            {"start", told(event.start)},
            {"end", told(event.end)},
            {"location", told(event.location)},
            {"isAllDay", event.isAllDay}};
}

QJsonObject fields(const Phone& phone)
{
    return {{"number", phone.number}};
}

QJsonObject fields(const Sms& sms)
{
    return {{"number", sms.number}, {"body", told(sms.body)}};
}

QJsonObject fields(const Email& email)
{
    return {{"address", email.address}, {"subject", told(email.subject)}, {"body", told(email.body)}};
}

QJsonObject fields(const Location& location)
{
    return {
        {"latitude", location.latitude}, {"longitude", location.longitude}, {"query", told(location.query)}};
}

QJsonObject fields(const Product& product)
{
    constexpr std::array kinds{"ean13", "ean8", "upcA", "upcE", "isbn"}; // as they are numbered
    return {{"number", product.number}, {"kind", kinds.at(size_t(product.kind))}};
}

QJsonObject fields(const Text& text)
{
    return {{"text", text.text}};
}

} // namespace

QJsonObject contentJson(const CodeContent& content)
{
    constexpr std::array kinds{"link",  "wifi",     "contact", "event", "phone", "sms",
                               "email", "location", "product", "text"}; // as the alternatives are numbered
    return {{"kind", kinds.at(content.index())},
            {"fields", std::visit([](const auto& one) { return fields(one); }, content)}};
}

std::optional<CodeSymbology> symbologyOf(const QString& rawText)
{
    for (int number = 0; number <= int(CodeSymbology::Other); ++number)
        if (folvane::rawText(CodeSymbology(number)) == rawText)
            return CodeSymbology(number);
    return std::nullopt;
}

} // namespace folvane
