#pragma once

#include <QString>

#include <array>

namespace folvane {

/// The words that stand ready, in the order in which they are shown.
enum class ReadyStamp { Approved, Paid, Copy, Confidential, Draft, Received, Date };

inline constexpr std::array readyStamps{ReadyStamp::Approved,     ReadyStamp::Paid,  ReadyStamp::Copy,
                                        ReadyStamp::Confidential, ReadyStamp::Draft, ReadyStamp::Received,
                                        ReadyStamp::Date};

/// In the user's language; empty for that of the date alone.
QString wordOf(ReadyStamp stamp);

/// What somebody typed as a word of a stamp: in capitals, cut to 40 characters; empty when it is only blanks.
QString customWord(const QString& typed);

/// "PAID · Nov 23, 2026": the parts that there are.
QString readyStampName(const QString& word, const QString& date);

} // namespace folvane
