#include "pdf/structure/FileInput.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <stdexcept>

namespace folvane::pdf {

namespace {

constexpr size_t bufferSize = 16 * 1024;

bool isLineEnd(char c)
{
    return c == '\r' || c == '\n';
}

} // namespace

FileInput::FileInput(std::shared_ptr<const SourceFile> file) : m_file(std::move(file)) {}

qpdf_offset_t FileInput::findAndSkipNextEOL()
{
    char c = 0;
    while (read(&c, 1) == 1) {
        if (!isLineEnd(c))
            continue;
        const qpdf_offset_t end = m_position - 1;
        while (read(&c, 1) == 1) {
            if (!isLineEnd(c)) {
                --m_position;
                break;
            }
        }
        return end;
    }
    return m_position;
}

void FileInput::seek(qpdf_offset_t offset, int whence)
{
    const qpdf_offset_t base = whence == SEEK_SET ? 0 : whence == SEEK_CUR ? m_position : m_file->size();
    qpdf_offset_t position = 0;
    if (__builtin_add_overflow(base, offset, &position) || position < 0)
        throw std::runtime_error("seek to nowhere");
    m_position = position;
}

size_t FileInput::read(char* buffer, size_t length)
{
    last_offset = m_position;
    const size_t count =
        length >= bufferSize ? readFile(m_position, buffer, length) : readBuffered(buffer, length);
    m_position += static_cast<qpdf_offset_t>(count);
    if (count < length && count == 0)
        last_offset = m_position;
    return count;
}

size_t FileInput::readBuffered(char* buffer, size_t length)
{
    const auto available = [this] {
        const qpdf_offset_t into = m_position - m_bufferStart;
        const auto filled = static_cast<qpdf_offset_t>(m_buffer.size());
        return into < 0 || into >= filled ? size_t{0} : static_cast<size_t>(filled - into);
    };
    if (available() < length) {
        m_buffer.resize(bufferSize);
        m_bufferStart = m_position;
        m_buffer.resize(readFile(m_position, m_buffer.data(), bufferSize));
    }
    const size_t count = std::min(length, available());
    if (count > 0)
        std::memcpy(buffer, m_buffer.data() + (m_position - m_bufferStart), count);
    return count;
}

size_t FileInput::readFile(qpdf_offset_t offset, char* buffer, size_t length) const
{
    const qint64 count = m_file->read(offset, buffer, static_cast<qint64>(length));
    if (count < 0)
        throw std::runtime_error("the source cannot be read");
    return static_cast<size_t>(count);
}

} // namespace folvane::pdf
