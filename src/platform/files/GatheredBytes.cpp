#include "platform/files/GatheredBytes.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

#include <sys/mman.h>

namespace folvane {

namespace {

constexpr size_t blockSize = 1 << 20;

void release(char* block)
{
    ::munmap(block, blockSize);
}

} // namespace

GatheredBytes::~GatheredBytes()
{
    std::ranges::for_each(m_blocks, release);
}

// Straight from the system, to which it goes back at once: the allocator would keep it for a while.
char* GatheredBytes::newBlock()
{
    if (m_blocks.size() == m_blocks.capacity())
        m_blocks.reserve(2 * m_blocks.size() + 16);
    void* block = ::mmap(nullptr, blockSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (block == MAP_FAILED)
        throw std::bad_alloc();
    m_inLast = 0;
    return m_blocks.emplace_back(static_cast<char*>(block));
}

void GatheredBytes::append(const char* data, size_t length)
{
    while (length > 0) {
        char* block = m_blocks.empty() || m_inLast == blockSize ? newBlock() : m_blocks.back();
        const size_t count = std::min(length, blockSize - m_inLast);
        std::memcpy(block + m_inLast, data, count);
        m_inLast += count;
        data += count;
        length -= count;
    }
}

QByteArray GatheredBytes::take()
{
    if (m_blocks.empty())
        return {};
    QByteArray bytes(static_cast<qsizetype>((m_blocks.size() - 1) * blockSize + m_inLast), Qt::Uninitialized);
    char* to = bytes.data();
    for (char*& block : m_blocks) {
        const size_t count = &block == &m_blocks.back() ? m_inLast : blockSize;
        to = std::copy_n(block, count, to);
        release(std::exchange(block, nullptr));
    }
    m_blocks.clear();
    return bytes;
}

} // namespace folvane
