#pragma once

#include <QList>
#include <QString>

#include <optional>

namespace folvane {

/// Two 1-based positions in a document's page list, first <= last.
struct PageRange {
    int first = 1;
    int last = 1;

    bool operator==(const PageRange&) const = default;
};

/// The grammar of page numbers that a person types, and its inverse.
namespace PageRanges {

/// The ranges in the order typed, neither merged nor sorted; nothing when the text is not valid for that many
/// pages.
///
///     text  = piece, { ( "," | ";" ), piece }     empty pieces count for nothing, but one must be left
///     piece = number, [ dash, number ]            1 <= first <= last <= count
///     dash  = "-" | "–" | "—"                     one at an end counts for nothing, several in a row for one
///
/// Blanks around pieces and numbers are ignored; a number is decimal digits, with or without "+" in front.
std::optional<QList<PageRange>> parse(const QString& text, int count);

/// "5", or "1-3".
QString describe(PageRange range);
/// The numbers as text in ascending order: 9, 1, 2, 3, 5, 8, 3 gives "1-3, 5, 8-9".
QString describe(QList<int> pages);

} // namespace PageRanges

} // namespace folvane
