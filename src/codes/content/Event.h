#pragma once

#include <QDateTime>
#include <QString>

#include <optional>

namespace folvane::codes {

/// An entry for a calendar. There is a title or a start at least.
struct Event {
    std::optional<QString> title;
    std::optional<QDateTime> start; ///< times in UTC; a day begins at midnight here
    std::optional<QDateTime> end;
    std::optional<QString> location;
    bool isAllDay = false;

    bool operator==(const Event&) const = default;
};

/// The first event of a text that holds "BEGIN:VEVENT".
std::optional<Event> event(QStringView text);

} // namespace folvane::codes
