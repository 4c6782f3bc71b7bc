#pragma once

#include <QHash>
#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <QUrl>

#include <initializer_list>
#include <optional>
#include <stdexcept>
#include <utility>

namespace folvane::driver {

/// A request that cannot be carried out as written; what() says why.
class BadRequest : public std::runtime_error {
public:
    explicit BadRequest(const QString& why) : std::runtime_error(why.toStdString()) {}
};

/// A path as a URL, made absolute from the working folder but otherwise as written.
QUrl urlOf(const QString& path);

// Each reads a value of its type; false when it is of another one. A URL is written as a path.
bool read(const QJsonValue& value, QString& into);
bool read(const QJsonValue& value, bool& into);
bool read(const QJsonValue& value, int& into);
bool read(const QJsonValue& value, double& into);
bool read(const QJsonValue& value, QUrl& into);
bool read(const QJsonValue& value, QHash<QUrl, QStringList>& into);
template <typename T>
bool read(const QJsonValue& value, QList<T>& into)
{
    for (const QJsonValue& one : value.toArray())
        if (!read(one, into.emplaceBack()))
            return false;
    return value.isArray();
}

/// One request. A field that is there with another type than asked for is a BadRequest; null counts as missing.
class Request {
public:
    /// Throws BadRequest unless the line is one JSON object.
    explicit Request(const QByteArray& line);

    QJsonValue id() const { return m_fields.value(QLatin1String("id")); }
    bool has(const char* name) const;

    template <typename T>
    std::optional<T> find(const char* name) const
    {
        T found{};
        if (!has(name))
            return std::nullopt;
        if (!read(value(name), found))
            throw BadRequest(QStringLiteral("\"%1\" has a wrong value").arg(QLatin1String(name)));
        return found;
    }
    template <typename T>
    T get(const char* name, std::optional<T> otherwise = std::nullopt) const
    {
        if (std::optional<T> found = find<T>(name))
            return *std::move(found);
        if (!otherwise)
            throw BadRequest(QStringLiteral("\"%1\" is missing").arg(QLatin1String(name)));
        return *std::move(otherwise);
    }
    /// One value or a list of them; empty when missing.
    template <typename T>
    QList<T> list(const char* name) const
    {
        if (!has(name) || value(name).isArray())
            return get<QList<T>>(name, QList<T>());
        return {get<T>(name)};
    }
    /// What the word in the field stands for; when it is missing, that of the word `otherwise`.
    template <typename T>
    T word(const char* name, std::initializer_list<std::pair<const char*, T>> meanings,
           const char* otherwise = "") const
    {
        const QString said = get<QString>(name, QString(QLatin1String(otherwise)));
        for (const auto& [word, meaning] : meanings)
            if (said == QLatin1String(word))
                return meaning;
        throw BadRequest(QStringLiteral("\"%1\" cannot be \"%2\"").arg(QLatin1String(name), said));
    }

private:
    QJsonValue value(const char* name) const { return m_fields.value(QLatin1String(name)); }

    QJsonObject m_fields;
};

} // namespace folvane::driver
