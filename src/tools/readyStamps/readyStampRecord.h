#pragma once

#include "stamps/StampInk.h"
#include "stamps/StampLibrary.h"

#include <optional>
#include <stop_token>

namespace folvane {

class Preferences;

/// What stands on a ready stamp; an empty word or date is none.
struct ReadyStampText {
    QString word;
    QString date;
};

/// How ready stamps are made. Kept in the preferences.
struct ReadyStampSettings {
    StampInk ink = StampInk::Red;
    bool addDate = false; ///< today's, below the word

    bool operator==(const ReadyStampSettings&) const = default;

    static ReadyStampSettings read(const Preferences& preferences);
    void write(Preferences& preferences) const;
};

/// The one in the library, where a new one is drawn unless it has it. Nothing when there is nothing to draw or it cannot
/// be stored, which the library then tells. After a stop the library, which must live until then, is not touched any more.
QCoro::Task<std::optional<StampRecord>> readyStampRecord(StampLibrary& library, ReadyStampText text,
                                                         StampInk ink, std::stop_token stop = {});

} // namespace folvane
