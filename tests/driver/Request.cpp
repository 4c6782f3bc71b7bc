#include "Request.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>

#include <cmath>

namespace folvane::driver {

namespace {

[[noreturn]] void wrongType(const char* name, const char* wanted)
{
    throw BadRequest(QStringLiteral("\"%1\" must be %2").arg(QLatin1String(name), QLatin1String(wanted)));
}

bool isMissing(const QJsonValue& value)
{
    return value.isUndefined() || value.isNull();
}

int toInteger(const QJsonValue& value, const char* name, const char* wanted)
{
    constexpr double limit = 1 << 30;
    const double number = value.toDouble(0.5);
    if (!value.isDouble() || std::trunc(number) != number || std::abs(number) > limit)
        wrongType(name, wanted);
    return int(number);
}

QString toText(const QJsonValue& value, const char* name, const char* wanted)
{
    if (!value.isString())
        wrongType(name, wanted);
    return value.toString();
}

// Not cleaned: two ways to write one path are two documents to the model.
QUrl fromPath(const QString& path)
{
    const bool absolute = path.startsWith(u'/');
    return QUrl::fromLocalFile(absolute ? path : QDir::currentPath() + u'/' + path);
}

QUrl toUrl(const QJsonValue& value, const char* name, const char* wanted)
{
    const QString path = toText(value, name, wanted);
    if (path.isEmpty())
        wrongType(name, wanted);
    return fromPath(path);
}

QStringList answers(const QJsonValue& value)
{
    constexpr auto wanted = "an object from paths to lists of answers";
    if (!value.isArray())
        wrongType("passwords", wanted);
    QStringList all;
    for (const auto& answer : value.toArray())
        all.append(toText(answer, "passwords", wanted));
    return all;
}

} // namespace

Request Request::parse(const QByteArray& line)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(line, &error);
    if (error.error != QJsonParseError::NoError)
        throw BadRequest(QStringLiteral("not JSON: ") + error.errorString());
    if (!document.isObject())
        throw BadRequest(QStringLiteral("not a JSON object"));
    return Request(document.object());
}

bool Request::has(const char* name) const
{
    return !isMissing(value(name));
}

QJsonValue Request::required(const char* name) const
{
    if (!has(name))
        throw BadRequest(QStringLiteral("\"%1\" is missing").arg(QLatin1String(name)));
    return value(name);
}

QString Request::text(const char* name) const
{
    return toText(required(name), name, "a text");
}

std::optional<QString> Request::optionalText(const char* name) const
{
    return has(name) ? std::optional(text(name)) : std::nullopt;
}

int Request::integer(const char* name) const
{
    return toInteger(required(name), name, "a whole number");
}

std::optional<int> Request::optionalInteger(const char* name) const
{
    return has(name) ? std::optional(integer(name)) : std::nullopt;
}

double Request::number(const char* name) const
{
    const QJsonValue found = required(name);
    if (!found.isDouble())
        wrongType(name, "a number");
    return found.toDouble();
}

bool Request::flag(const char* name, bool otherwise) const
{
    if (!has(name))
        return otherwise;
    if (!value(name).isBool())
        wrongType(name, "true or false");
    return value(name).toBool();
}

QList<int> Request::integers(const char* name) const
{
    constexpr auto wanted = "a list of whole numbers";
    const QJsonValue found = required(name);
    if (!found.isArray())
        wrongType(name, wanted);
    QList<int> numbers;
    for (const auto& number : found.toArray())
        numbers.append(toInteger(number, name, wanted));
    return numbers;
}

std::optional<QList<int>> Request::optionalIntegers(const char* name) const
{
    return has(name) ? std::optional(integers(name)) : std::nullopt;
}

QUrl Request::url(const char* name) const
{
    return toUrl(required(name), name, "a path");
}

std::optional<QUrl> Request::optionalUrl(const char* name) const
{
    return has(name) ? std::optional(url(name)) : std::nullopt;
}

QList<QUrl> Request::urls(const char* name) const
{
    constexpr auto wanted = "a path or a list of paths";
    if (!has(name))
        return {};
    if (!value(name).isArray())
        return {toUrl(value(name), name, wanted)};
    QList<QUrl> all;
    for (const auto& path : value(name).toArray())
        all.append(toUrl(path, name, wanted));
    return all;
}

QList<std::pair<QUrl, QStringList>> Request::passwords() const
{
    if (!has("passwords"))
        return {};
    if (!value("passwords").isObject())
        wrongType("passwords", "an object from paths to lists of answers");
    const QJsonObject all = value("passwords").toObject();
    QList<std::pair<QUrl, QStringList>> byFile;
    for (auto entry = all.begin(); entry != all.end(); ++entry)
        byFile.append({fromPath(entry.key()), answers(entry.value())});
    return byFile;
}

} // namespace folvane::driver
