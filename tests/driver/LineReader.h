#pragma once

#include "platform/tasks/JobQueue.h"

#include <QByteArray>

#include <optional>

namespace folvane::driver {

/// The lines of standard input, read on a thread of its own so that the event loop goes on meanwhile.
class LineReader {
public:
    struct Line {
        QByteArray text;
        bool isTooLong = false; ///< it was passed over; the text is empty
    };
    static constexpr qsizetype limit = 16 << 20; ///< bytes of a line

    /// Nothing at the end of input.
    QCoro::Task<std::optional<Line>> next();

private:
    std::optional<Line> read();
    bool fill();

    QByteArray m_buffer;  // touched on the reading thread only
    qsizetype m_used = 0; // of m_buffer, by earlier lines
    JobQueue m_thread{QStringLiteral("requests"), 1, 0};
};

} // namespace folvane::driver
