#pragma once

#include "records/CompressionStep.h"

#include <QCoroTask>

#include <QByteArray>
#include <QString>

#include <array>
#include <functional>
#include <optional>
#include <stop_token>
#include <vector>

/// How a PDF is made smaller. Its size is known only once it is made, so finding one under a limit means building.
namespace folvane::Compression {

/// A rung of a ladder; none keeps the file as it is.
using Rung = std::optional<CompressionStep>;
using Ladder = std::vector<Rung>;

enum class Choice { Original, Medium, Small, UpTo };

/// From the best quality to the smallest; text stays text.
inline constexpr std::array<Rung, 8> ladder{
    Rung(),
    Rung({2000, 0.7, false}),
    Rung({1800, 0.62, false}),
    Rung({1600, 0.55, false}),
    Rung({1300, 0.55, false}),
    Rung({1300, 0.45, false}),
    Rung({1150, 0.4, false}),
    Rung({1000, 0.35, false}),
};

/// The same with pages turned into pictures, for limits that the other cannot reach.
inline constexpr std::array<Rung, 8> pictureLadder{
    Rung({2000, 0.6, true}),  Rung({1600, 0.5, true}), Rung({1300, 0.45, true}), Rung({1150, 0.4, true}),
    Rung({1000, 0.35, true}), Rung({900, 0.3, true}),  Rung({800, 0.25, true}),  Rung({700, 0.2, true}),
};

/// The size limits that are offered, in bytes.
inline constexpr std::array<qint64, 14> limits{
    200'000,   300'000,   500'000,   750'000,   1'000'000,  1'500'000,  2'000'000,
    3'000'000, 4'000'000, 5'000'000, 7'500'000, 10'000'000, 15'000'000, 20'000'000,
};

/// The rung of a choice that has a fixed one: none for `Original`, and for `UpTo`, whose rung a search finds.
Rung rung(Choice choice);

/// "0.75 MB", "20 MB", in the user's locale.
QString limitTitle(qint64 bytes);

/// Makes the PDF of one rung.
using Build = std::function<QCoro::Task<QByteArray>(Rung)>;

struct Found {
    QByteArray data;
    bool reached = false; ///< `data` is at or under the limit
};

struct Fit {
    QByteArray data;
    bool reached = false;         ///< `data` is at or under the limit
    bool pagesAsPictures = false; ///< `data` has pictures for pages

    bool operator==(const Fit&) const = default;
};

/// The highest rung of `steps` (at least one) with at most `limit` bytes, where sizes fall along the ladder; where they
/// don't, a rung that fits. When not even the last one fits, that one. Builds no rung twice, and of eight rungs five
/// at most: the first, the last, then a binary search between them. What `build` throws comes out of here; a stop is
/// looked at before each build and throws Cancelled.
QCoro::Task<Found> search(Ladder steps, qint64 limit, Build build, std::stop_token stop);

/// Searches `ladder`, and when nothing fits there `pictureLadder`. When nothing fits at all, the smaller of the two last
/// rungs; of equal ones the one with text.
QCoro::Task<Fit> fit(qint64 limit, Build build, std::stop_token stop);

} // namespace folvane::Compression
