#include "Answer.h"

#include <QJsonDocument>

#include <array>
#include <cstdio>

namespace folvane::driver {

namespace {

constexpr std::array outcomes{"done", "refused", "cancelled", "dropped", "failed"};

QJsonValue orNull(const std::optional<QString>& text)
{
    return text ? QJsonValue(*text) : QJsonValue();
}

} // namespace

QJsonObject Answer::toJson() const
{
    if (!bad.isEmpty())
        return {{"ok", false}, {"bad", bad}};
    QJsonObject json = fields;
    json["ok"] = true;
    json["outcome"] = outcomes[size_t(outcome.value_or(Outcome::Done))];
    json["error"] = orNull(error);
    json["toast"] = orNull(toast);
    json["ms"] = milliseconds;
    json["prompts"] = prompts;
    json["panels"] = panels;
    json["saved"] = saved;
    json["bytes"] = bytes;
    return json;
}

void writeLine(QJsonObject object, const QJsonValue& id)
{
    object.insert("id", id);
    const QByteArray line = QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
    std::fwrite(line.constData(), 1, size_t(line.size()), stdout);
    std::fflush(stdout);
}

} // namespace folvane::driver
