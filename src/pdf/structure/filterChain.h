#pragma once

#include "pdf/structure/qpdfInclude.h"

#include <QByteArray>

#include <optional>
#include <stop_token>
#include <string>
#include <vector>

namespace folvane::pdf {

/// One way in which the bytes of a stream are packed.
struct FilterStage {
    std::string name;       ///< in full, with its slash: "/FlateDecode"
    std::string parameters; ///< as PDF text; "null" when there are none
};

/// What must be undone to read a stream, from the outermost on.
using FilterChain = std::vector<FilterStage>;

/// Nothing when the entries are broken or huge, or name a filter that is not in the standard.
std::optional<FilterChain> filterChain(QPDFObjectHandle stream);

/// Whether undoing the filters of a stream takes rows (PNG, TIFF predictors) that are larger than any real one: a few bytes
/// can ask for gigabytes.
bool hasHugeRows(QPDFObjectHandle streamDictionary);

/// Packed without loss and known to `unpack`: Flate, LZW, run lengths, ASCII.
bool isPlain(const FilterStage& stage);

/// The bytes of a stream as they are stored. Nothing when they cannot be read or are more than `limit`; throws Cancelled.
std::optional<QByteArray> storedBytes(QPDFObjectHandle stream, qint64 limit, const std::stop_token& stop);

/// Undoes plain stages and hands the result to `taker`, which may throw to end it early. Works on any thread. False when
/// the data is damaged, or ended early.
bool unpack(const QByteArray& bytes, const FilterChain& stages, Pipeline& taker);
/// The same into memory; nothing when damaged, stopped, or more than `limit` bytes.
std::optional<QByteArray> unpacked(const QByteArray& bytes, const FilterChain& stages, qint64 limit,
                                   const std::stop_token& stop);

} // namespace folvane::pdf
