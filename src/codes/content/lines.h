#pragma once

#include <QStringList>

#include <optional>

namespace folvane::codes {

/// The lines of a vCard or an iCalendar text, without empty ones; what was folded is one line again.
QStringList unfoldedLines(QStringView text);

/// "TEL;TYPE=CELL:+34 1" taken apart.
struct LineField {
    QString head;  ///< what stands before the first colon, in upper case
    QString value; ///< what stands behind it, its escaped commas bare
};

/// Nothing when the line has no colon.
std::optional<LineField> lineField(const QString& line);

} // namespace folvane::codes
