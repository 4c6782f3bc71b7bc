#include "codes/content/Event.h"

#include "codes/content/calendarTime.h"
#include "codes/content/characters.h"
#include "codes/content/letterCase.h"
#include "codes/content/lines.h"

namespace folvane::codes {

namespace {

/// The fields that are shown, each as it came last.
struct EventFields {
    std::optional<LineField> summary;
    std::optional<LineField> location;
    std::optional<LineField> start;
    std::optional<LineField> end;

    void take(const LineField& field)
    {
        for (const auto& [name, place] : {std::pair(u"SUMMARY", &summary), std::pair(u"LOCATION", &location),
                                          std::pair(u"DTSTART", &start), std::pair(u"DTEND", &end)})
            if (beginsWith(field.head, name))
                *place = field;
    }
};

EventFields fieldsOfFirstEvent(const QStringList& lines)
{
    EventFields fields;
    bool isInside = false;
    for (const QString& line : lines) {
        const QString upper = upperCase(line);
        if (beginsWith(upper, u"BEGIN:VEVENT")) {
            isInside = true;
            continue;
        }
        if (beginsWith(upper, u"END:VEVENT"))
            break;
        const std::optional<LineField> field = isInside ? lineField(line) : std::nullopt;
        if (field)
            fields.take(*field);
    }
    return fields;
}

std::optional<QString> valueOf(const std::optional<LineField>& field)
{
    return field ? std::optional(field->value) : std::nullopt;
}

std::optional<QDateTime> timeOf(const std::optional<LineField>& field)
{
    return field ? calendarTime(field->value) : std::nullopt;
}

bool isWholeDay(const LineField& field)
{
    return field.head.contains(QLatin1String("VALUE=DATE")) || characters(field.value).size() == 8;
}

} // namespace

// 1. Lines count from "BEGIN:VEVENT" to the first "END:VEVENT", where reading stops, or to the end of the text.
// 2. A field is told by what its line begins with, so parameters may follow. Of several the last one counts.
// 3. The event takes whole days when the head of DTSTART holds "VALUE=DATE", or its value has eight characters.
// 4. A time that cannot be read is missing. Without SUMMARY and such a start it is no event.
std::optional<Event> event(QStringView text)
{
    const EventFields fields = fieldsOfFirstEvent(unfoldedLines(text));
    Event found{valueOf(fields.summary), timeOf(fields.start), timeOf(fields.end), valueOf(fields.location),
                fields.start && isWholeDay(*fields.start)};
    if (!found.title && !found.start)
        return std::nullopt;
    return found;
}

} // namespace folvane::codes
