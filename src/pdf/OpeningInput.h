#pragma once

#include "pdf/structure/FileInput.h"

#include <stop_token>

namespace folvane::pdf {

/// A source while it is being opened. A file without a sound cross-reference is searched by the library, which can take
/// as long as it likes for that: reading throws std::runtime_error once a stop is asked for or 10 seconds of computing
/// are over.
class OpeningInput : public FileInput {
public:
    OpeningInput(std::shared_ptr<const SourceFile> file, std::stop_token stop);

    size_t read(char* buffer, size_t length) override;
    /// From now on it reads like any other.
    void endOpening() { m_isOpening = false; }

private:
    bool mustEnd() const;

    std::stop_token m_stop;
    double m_begin;
    unsigned m_reads = 0;
    bool m_isOpening = true;
};

} // namespace folvane::pdf
