#pragma once

#include <QByteArray>

#include <cstddef>
#include <vector>

namespace folvane {

/// Bytes that come in small pieces, until all are known. What is gathered never moves, and goes over into the result
/// block by block, so that memory holds it hardly more than once.
class GatheredBytes {
public:
    GatheredBytes() = default;
    ~GatheredBytes();
    Q_DISABLE_COPY_MOVE(GatheredBytes)

    /// Throws std::bad_alloc.
    void append(const char* data, size_t length);
    /// Empties itself. Throws std::bad_alloc.
    QByteArray take();

private:
    char* newBlock();

    std::vector<char*> m_blocks; // all but the last are full
    size_t m_inLast = 0;
};

} // namespace folvane
