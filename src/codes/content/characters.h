#pragma once

#include <QList>
#include <QStringView>

#include <limits>

namespace folvane::codes {

// How payloads are read: by characters as a person sees them (extended grapheme clusters), so a colon that carries an
// accent is no colon. Separators and prefixes are ASCII.

QList<QStringView> characters(QStringView text);
QStringView withoutFirst(QStringView text, int count);

bool beginsWith(QStringView text, QStringView prefix);
/// Whether the ASCII code at this place is a character of its own.
bool standsAlone(QStringView text, qsizetype at);
/// Where the separator first stands, or -1.
qsizetype indexOf(QStringView text, char16_t separator, qsizetype from = 0);

/// What stands between separators. Empty pieces are left out, and then do not count as splits either; behind the last
/// split that is allowed the rest stands whole.
QList<QStringView> pieces(QStringView text, char16_t separator,
                          qsizetype mostSplits = std::numeric_limits<qsizetype>::max());
/// The first of them; empty when there is none.
QStringView firstPiece(QStringView text, char16_t separator);

} // namespace folvane::codes
