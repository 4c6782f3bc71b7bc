#pragma once

#include "pdf/ImageSamples.h"

#include <QByteArray>

#include <optional>

namespace folvane {

/// A decoded picture packed without loss, for keeping. Pages are mostly paper: many times as many fit into memory.
class PackedSamples {
public:
    /// Throws std::bad_alloc.
    explicit PackedSamples(const pdf::ImageSamples& samples);

    /// Of what is kept.
    size_t byteCount() const { return static_cast<size_t>(m_bytes.size()); }
    std::optional<pdf::ImageSamples> unpacked() const;

private:
    QSize m_size;
    int m_channels;
    QByteArray m_bytes; // one frame of Zstandard (RFC 8878)
};

} // namespace folvane
