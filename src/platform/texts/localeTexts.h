#pragma once

#include <QCollator>
#include <QDate>
#include <QString>
#include <QStringList>

namespace folvane {

// Texts after the rules of the current locale, QLocale().

/// A file's size in decimal units: "0 bytes", "1 byte", "12 KB", "1.2 MB", "1.23 GB". Whole numbers up to KB,
/// one decimal for MB, two above, no trailing zeros; a size that rounds to 1000 goes up to the next unit.
QString byteCount(qint64 bytes);

/// "0.75 MB", "20 MB": two decimals at most, no trailing zeros.
QString megabytes(double megabytes);

/// Order of names for people, to sort and compare by: digits count as numbers, so that "2" comes before "10".
QCollator naturalOrder();

/// "Nov 23, 2026".
QString abbreviatedDate(QDate date);

/// "A", "A and B", "A, B, and C".
QString joinedNames(const QStringList& names);

} // namespace folvane
