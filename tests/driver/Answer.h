#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QString>

#include <functional>
#include <optional>

namespace folvane::driver {

/// How a verb ended. The README tells how each is decided.
enum class Outcome { Done, Refused, Cancelled, Dropped, Failed };

/// Writes one answer piece by piece, so that a large one is never held whole.
class JsonLine {
public:
    JsonLine();
    JsonLine(const JsonLine&) = delete;
    JsonLine& operator=(const JsonLine&) = delete;
    /// Ends the line and flushes it.
    ~JsonLine();

    void field(const QString& name, const QJsonValue& value);
    /// An array field of objects; `fields` writes the fields of each.
    void objects(const QString& name, int count, const std::function<void(int)>& fields);

private:
    void beginField(const QString& name);

    bool m_first = true;
};

/// What a verb found, told on one line of standard output.
struct Answer {
    QString bad; ///< why the request could not be carried out; empty when it could
    Outcome outcome = Outcome::Done;
    std::optional<QString> error;
    std::optional<QString> toast;
    double milliseconds = 0;
    QJsonArray prompts;
    QJsonArray panels;
    QStringList saved;                   ///< paths of the files written
    qint64 bytes = 0;                    ///< their sizes together
    QJsonObject fields;                  ///< what the verb alone tells
    std::function<void(JsonLine&)> rest; ///< writes what is too large for `fields`

    void write(const QJsonValue& id) const;
};

/// The answer to a request that could not be carried out.
void writeBad(const QJsonValue& id, const QString& why);
/// The answer to a request that goes on by itself.
void writeJob(const QJsonValue& id, int job);

} // namespace folvane::driver
