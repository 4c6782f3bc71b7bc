#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QString>

#include <optional>

namespace folvane::driver {

/// How a verb ended. The README tells how each is decided.
enum class Outcome { Done, Refused, Cancelled, Dropped, Failed };

/// What a request is answered with.
struct Answer {
    QString bad; ///< why the request could not be carried out; empty when it could
    std::optional<Outcome> outcome;
    std::optional<QString> error;
    std::optional<QString> toast;
    double milliseconds = 0;
    QJsonArray prompts;
    QJsonArray panels;
    QJsonArray saved;   ///< paths of the files written
    qint64 bytes = 0;   ///< their sizes together
    QJsonObject fields; ///< what the verb alone tells

    QJsonObject toJson() const;
};

/// Writes the object on one line of standard output; it gets the id, unless that is undefined.
void writeLine(QJsonObject object, const QJsonValue& id);

} // namespace folvane::driver
