#include "stamps/stampIndex.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>

namespace folvane {

namespace {

const QString idKey = QStringLiteral("id"), nameKey = QStringLiteral("name"),
              createdKey = QStringLiteral("createdAt"), widthKey = QStringLiteral("pixelWidth"),
              heightKey = QStringLiteral("pixelHeight");

QString textOf(const QUuid& id)
{
    return id.toString(QUuid::WithoutBraces).toUpper();
}

/// Its canonical text only: 36 characters with hyphens.
std::optional<QUuid> uuid(const QJsonValue& value)
{
    const QString text = value.toString();
    const QUuid id = QUuid::fromString(text);
    return textOf(id) == text.toUpper() ? std::optional(id) : std::nullopt;
}

/// A whole number, as far as a double can tell.
std::optional<qint64> integer(const QJsonValue& value)
{
    constexpr double beyond = 9223372036854775808.0; // 2 to the 63rd
    const double number = value.toDouble(beyond);
    return number == std::trunc(number) && std::abs(number) < beyond ? std::optional(value.toInteger())
                                                                     : std::nullopt;
}

std::optional<StampRecord> recordOf(const QJsonObject& object)
{
    const std::optional<QUuid> id = uuid(object[idKey]);
    const std::optional<qint64> width = integer(object[widthKey]), height = integer(object[heightKey]);
    if (!id || !width || !height || !object[nameKey].isString() || !object[createdKey].isDouble())
        return std::nullopt;
    return StampRecord{*id, object[nameKey].toString(), object[createdKey].toDouble(), *width, *height};
}

} // namespace

QByteArray stampIndex(const QList<StampRecord>& records)
{
    QJsonArray array;
    for (const StampRecord& record : records)
        array.append(QJsonObject{{idKey, textOf(record.id)},
                                 {nameKey, record.name},
                                 {createdKey, record.createdAt},
                                 {widthKey, record.pixelWidth},
                                 {heightKey, record.pixelHeight}});
    // Nothing but a text can hold one.
    return QJsonDocument(array).toJson(QJsonDocument::Compact).replace("/", "\\/");
}

std::optional<QList<StampRecord>> recordsOfIndex(const QByteArray& json)
{
    const QJsonDocument document = QJsonDocument::fromJson(json);
    if (!document.isArray())
        return std::nullopt;
    QList<StampRecord> records;
    for (const QJsonValue value : document.array()) {
        const std::optional<StampRecord> record = recordOf(value.toObject());
        if (!record)
            return std::nullopt;
        records.append(*record);
    }
    return records;
}

} // namespace folvane
