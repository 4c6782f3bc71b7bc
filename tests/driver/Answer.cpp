#include "Answer.h"

#include <QJsonDocument>

#include <cstdio>

namespace folvane::driver {

namespace {

void put(const QByteArray& bytes)
{
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout);
}

// QJsonDocument holds no bare value: the value is written in an array, without the brackets.
QByteArray toJson(const QJsonValue& value)
{
    const QByteArray array = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return array.mid(1, array.size() - 2);
}

QString name(Outcome outcome)
{
    switch (outcome) {
    case Outcome::Done: return QStringLiteral("done");
    case Outcome::Refused: return QStringLiteral("refused");
    case Outcome::Cancelled: return QStringLiteral("cancelled");
    case Outcome::Dropped: return QStringLiteral("dropped");
    case Outcome::Failed: return QStringLiteral("failed");
    }
    Q_UNREACHABLE();
}

QJsonValue orNull(const std::optional<QString>& text)
{
    return text ? QJsonValue(*text) : QJsonValue(QJsonValue::Null);
}

void begin(JsonLine& line, const QJsonValue& id, bool ok)
{
    if (!id.isUndefined())
        line.field(QStringLiteral("id"), id);
    line.field(QStringLiteral("ok"), ok);
}

} // namespace

JsonLine::JsonLine()
{
    put("{");
}

JsonLine::~JsonLine()
{
    put("}\n");
    std::fflush(stdout);
}

void JsonLine::beginField(const QString& name)
{
    if (!m_first)
        put(",");
    m_first = false;
    put(toJson(name) + ':');
}

void JsonLine::field(const QString& name, const QJsonValue& value)
{
    beginField(name);
    put(toJson(value));
}

void JsonLine::objects(const QString& name, int count, const std::function<void(int)>& fields)
{
    beginField(name);
    put("[");
    for (int i = 0; i < count; ++i) {
        put(i > 0 ? ",{" : "{");
        m_first = true;
        fields(i);
        put("}");
    }
    put("]");
    m_first = false;
}

void Answer::write(const QJsonValue& id) const
{
    if (!bad.isEmpty())
        return writeBad(id, bad);
    JsonLine line;
    begin(line, id, true);
    line.field(QStringLiteral("outcome"), name(outcome));
    line.field(QStringLiteral("error"), orNull(error));
    line.field(QStringLiteral("ms"), milliseconds);
    line.field(QStringLiteral("prompts"), prompts);
    line.field(QStringLiteral("panels"), panels);
    line.field(QStringLiteral("toast"), orNull(toast));
    line.field(QStringLiteral("saved"), QJsonArray::fromStringList(saved));
    line.field(QStringLiteral("bytes"), bytes);
    for (auto entry = fields.begin(); entry != fields.end(); ++entry)
        line.field(entry.key(), entry.value());
    if (rest)
        rest(line);
}

void writeBad(const QJsonValue& id, const QString& why)
{
    JsonLine line;
    begin(line, id, false);
    line.field(QStringLiteral("bad"), why);
}

void writeJob(const QJsonValue& id, int job)
{
    JsonLine line;
    begin(line, id, true);
    line.field(QStringLiteral("job"), job);
}

} // namespace folvane::driver
