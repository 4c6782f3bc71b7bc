#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <optional>
#include <stdexcept>

namespace folvane::driver {

/// A request that cannot be carried out as written; what() says why.
class BadRequest : public std::runtime_error {
public:
    explicit BadRequest(const QString& why) : std::runtime_error(why.toStdString()) {}
};

/// One request. A field that is there with another type than asked for is a BadRequest, as is a required one
/// that is missing; null counts as missing.
class Request {
public:
    Request() = default;
    explicit Request(QJsonObject fields) : m_fields(std::move(fields)) {}
    /// Reads a line; throws BadRequest unless it is one JSON object.
    static Request parse(const QByteArray& line);

    QString verb() const { return text("do"); }
    QJsonValue id() const { return m_fields.value(QLatin1String("id")); }

    bool has(const char* name) const;
    QString text(const char* name) const;
    std::optional<QString> optionalText(const char* name) const;
    bool isList(const char* name) const { return value(name).isArray(); }
    int integer(const char* name) const;
    std::optional<int> optionalInteger(const char* name) const;
    double number(const char* name) const;
    bool flag(const char* name, bool otherwise) const;
    std::optional<QList<int>> optionalIntegers(const char* name) const;
    QList<int> integers(const char* name) const;

    /// A path, made absolute from the working folder but otherwise as written.
    QUrl url(const char* name) const;
    std::optional<QUrl> optionalUrl(const char* name) const;
    /// A path or a list of paths; empty when missing.
    QList<QUrl> urls(const char* name) const;
    /// The answers to give about each locked file.
    QList<std::pair<QUrl, QStringList>> passwords() const;

private:
    QJsonValue value(const char* name) const { return m_fields.value(QLatin1String(name)); }
    QJsonValue required(const char* name) const;

    QJsonObject m_fields;
};

} // namespace folvane::driver
