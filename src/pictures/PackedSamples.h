#pragma once

#include "pictures/ImageSamples.h"

#include <QByteArray>

#include <optional>

namespace folvane {

/// A decoded picture packed without loss, for keeping. Pages are mostly paper: many times as many fit into memory.
class PackedSamples {
public:
    enum class Effort {
        Quick,
        Small, ///< also tries what suits photographs
    };

    /// Throws std::bad_alloc.
    explicit PackedSamples(const ImageSamples& samples, Effort effort = Effort::Quick);

    /// Of what is kept.
    size_t byteCount() const { return static_cast<size_t>(m_bytes.size()); }
    std::optional<ImageSamples> unpacked() const;

private:
    QSize m_size;
    int m_channels;
    bool m_areDifferences = false;
    QByteArray m_bytes; // one frame of Zstandard (RFC 8878)
};

} // namespace folvane
