#include "Request.h"

#include <QDir>
#include <QJsonDocument>

#include <cmath>

namespace folvane::driver {

constexpr qsizetype longestLine = 16 << 20; // bytes

// Not cleaned: two ways to write one path are two documents to the model.
QUrl urlOf(const QString& path)
{
    return QUrl::fromLocalFile(path.startsWith(u'/') ? path : QDir::currentPath() + u'/' + path);
}

bool read(const QJsonValue& value, QString& into)
{
    into = value.toString();
    return value.isString();
}

bool read(const QJsonValue& value, bool& into)
{
    into = value.toBool();
    return value.isBool();
}

bool read(const QJsonValue& value, int& into)
{
    constexpr double limit = 1 << 30;
    const double number = value.toDouble(0.5);
    const bool isInteger = std::trunc(number) == number && std::abs(number) <= limit;
    into = isInteger ? int(number) : 0;
    return isInteger;
}

bool read(const QJsonValue& value, double& into)
{
    into = value.toDouble();
    return value.isDouble();
}

bool read(const QJsonValue& value, QUrl& into)
{
    into = urlOf(value.toString());
    return !value.toString().isEmpty();
}

bool read(const QJsonValue& value, QHash<QUrl, QStringList>& into)
{
    const QJsonObject object = value.toObject();
    for (auto entry = object.begin(); entry != object.end(); ++entry)
        if (!read(entry.value(), into[urlOf(entry.key())]))
            return false;
    return value.isObject();
}

Request::Request(const QByteArray& line)
{
    if (line.size() > longestLine)
        throw BadRequest(QStringLiteral("the line is too long"));
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(line, &error);
    if (!document.isObject())
        throw BadRequest(QStringLiteral("not a JSON object: ") + error.errorString());
    m_fields = document.object();
}

bool Request::has(const char* name) const
{
    return !value(name).isUndefined() && !value(name).isNull();
}

} // namespace folvane::driver
