#pragma once

#include <QHash>
#include <QString>

#include <optional>

namespace folvane::codes {

/// The fields of "KEY:value;KEY:value;", which Wi-Fi networks, MECARD contacts and MATMSG mail are written in, by key in
/// upper case. The values of a key that comes more than once are joined by line feeds.
class MeFields {
public:
    explicit MeFields(QStringView text);

    std::optional<QString> find(const char* key) const;
    QString valueOrEmpty(const char* key) const { return find(key).value_or(QString()); }

private:
    void add(const QString& key, const QString& value);

    QHash<QString, QString> m_values;
};

} // namespace folvane::codes
