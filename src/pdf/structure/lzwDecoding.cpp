#include "pdf/structure/lzwDecoding.h"

#include <stdexcept>

namespace folvane::pdf {

namespace {

constexpr unsigned clearCode = 256;
constexpr unsigned endCode = 257;
constexpr unsigned firstFree = 258;
constexpr unsigned mostEntries = 4096;
constexpr unsigned none = mostEntries;

} // namespace

LzwDecoder::LzwDecoder(Pipeline* next, bool isEarly)
    : Pipeline("lzw", next), m_early(isEarly ? 1 : 0), m_last(none)
{
    m_entries.reserve(mostEntries);
    m_text.resize(mostEntries);
    for (unsigned code = 0; code < firstFree; ++code) {
        const auto byte = static_cast<unsigned char>(code);
        m_entries.push_back({none, 1, byte, byte});
    }
}

void LzwDecoder::write(const unsigned char* data, size_t length)
{
    for (size_t i = 0; i < length && !m_isAtEnd; ++i) {
        m_pending = m_pending << 8 | data[i];
        m_pendingBits += 8;
        if (m_pendingBits < m_codeBits)
            continue;
        m_pendingBits -= m_codeBits;
        const unsigned code = m_pending >> m_pendingBits;
        m_pending &= (1U << m_pendingBits) - 1;
        take(code);
    }
}

void LzwDecoder::finish()
{
    getNext()->finish();
}

void LzwDecoder::clear()
{
    m_entries.resize(firstFree);
    m_codeBits = 9;
    m_last = none;
}

void LzwDecoder::take(unsigned code)
{
    if (code == clearCode)
        return clear();
    if (code == endCode) {
        m_isAtEnd = true;
        return;
    }
    const auto known = static_cast<unsigned>(m_entries.size());
    if (code > known || (code == known && m_last == none))
        throw std::runtime_error("no such code");
    if (m_last != none)
        add(m_last, code < known ? m_entries[code].first : m_entries[m_last].first);
    emit(code);
    m_last = code;
}

void LzwDecoder::add(unsigned before, unsigned char last)
{
    if (m_entries.size() >= mostEntries)
        return; // some writers clear late
    m_entries.push_back({before, m_entries[before].length + 1, m_entries[before].first, last});
    const size_t next = m_entries.size() + m_early;
    if (next == 512 || next == 1024 || next == 2048)
        ++m_codeBits;
}

void LzwDecoder::emit(unsigned code)
{
    const unsigned length = m_entries[code].length;
    for (unsigned at = length; at-- > 0; code = m_entries[code].before)
        m_text[at] = m_entries[code].last;
    getNext()->write(m_text.data(), length);
}

} // namespace folvane::pdf
