#pragma once

#include <QDateTime>
#include <QStringView>

#include <optional>

namespace folvane::codes {

/// The moment that an iCalendar value names, in UTC: "20250102T030405Z", or without the Z or as a day, "20250102", by
/// the machine's clock, whatever zone its line tells. Nothing when it has another shape or there is no such time.
std::optional<QDateTime> calendarTime(QStringView text);

} // namespace folvane::codes
