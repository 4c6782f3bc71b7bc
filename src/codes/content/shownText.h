#pragma once

#include <QString>

#include <vector>

namespace folvane {

/// A part of a text as it can be shown without hiding anything.
struct ShownPiece {
    QString shown;
    QString original;    ///< what stands there
    bool isMark = false; ///< `shown` is the name of a character that cannot be seen, such as "U+202E"

    bool operator==(const ShownPiece&) const = default;
};

/// What a stranger wrote, such that all of it can be seen and nothing of it turns, hides or joins what stands around it: control
/// characters, direction marks and the like become marks. Line breaks stay; joiners stay where letters and emoji need them.
std::vector<ShownPiece> shownText(QStringView text);

/// The same in one line, where only the eyes are to be led: "a⟨U+202E⟩b".
QString shownLine(QStringView text);

} // namespace folvane
