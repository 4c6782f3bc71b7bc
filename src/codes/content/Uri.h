#pragma once

#include <QList>
#include <QString>

#include <optional>

namespace folvane::codes {

/// An address taken apart by RFC 3986, as far as payloads need it.
struct Uri {
    struct Item {
        QString name;
        std::optional<QString> value; ///< nothing when no "=" follows the name
    };

    QString path;      ///< as written
    QList<Item> items; ///< of the query, decoded

    /// Nothing when the text does not begin with a scheme.
    static std::optional<Uri> parse(QStringView text);

    /// The value of the first item of that name; a name in lower case stands for any case.
    std::optional<QString> value(QStringView name,
                                 Qt::CaseSensitivity sensitivity = Qt::CaseInsensitive) const;
};

/// Nothing when a "%" is not followed by two hexadecimal digits, or the bytes are not UTF-8.
std::optional<QString> percentDecoded(QStringView text);

} // namespace folvane::codes
