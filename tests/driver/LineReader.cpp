#include "LineReader.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include <unistd.h>

namespace folvane::driver {

// Reads on behind what is in the buffer; false at the end of input.
bool LineReader::fill()
{
    constexpr qsizetype chunk = 64 << 10;
    const qsizetype size = m_buffer.size();
    m_buffer.resize(size + chunk);
    ssize_t count = -1;
    do
        count = ::read(STDIN_FILENO, m_buffer.data() + size, size_t(chunk));
    while (count < 0 && errno == EINTR);
    m_buffer.resize(size + std::max<ssize_t>(count, 0));
    return count > 0;
}

std::optional<LineReader::Line> LineReader::read()
{
    Line line;
    m_buffer.remove(0, std::exchange(m_used, 0));
    qsizetype searched = 0;
    while (true) {
        const qsizetype end = m_buffer.indexOf('\n', searched);
        if (end >= 0 && !line.isTooLong)
            line.text = m_buffer.first(end);
        if (end >= 0) {
            m_used = end + 1;
            return line;
        }
        if (m_buffer.size() > limit) {
            line.isTooLong = true;
            m_buffer.clear();
        }
        searched = m_buffer.size();
        if (!fill())
            break;
    }
    line.text = line.isTooLong ? QByteArray() : std::exchange(m_buffer, {});
    return line.text.isEmpty() && !line.isTooLong ? std::nullopt : std::optional(line);
}

QCoro::Task<std::optional<LineReader::Line>> LineReader::next()
{
    const auto job = [this] { return read(); };
    QCoro::Task<std::optional<Line>> reading = m_thread.run(job);
    std::optional<Line> line = co_await reading;
    co_return line;
}

} // namespace folvane::driver
