#include "pdf/drawing/DrawingInput.h"

#include "pdf/drawing/DrawingBudget.h"

#include <Object.h>
#include <Stream.h>

#include <algorithm>
#include <vector>

namespace folvane::pdf {

namespace {

/// Reads by position; each stream has a position of its own.
class InputStream final : public BaseSeekInputStream {
public:
    InputStream(std::shared_ptr<DrawingInput> input, Goffset from, bool limited, Goffset size, Object&& dict)
        : BaseSeekInputStream(from, limited, size, std::move(dict)), m_input(std::move(input))
    {
    }
    ~InputStream() override { close(); }

    BaseStream* copy() override { return new InputStream(m_input, start, limited, length, dict.copy()); }

    Stream* makeSubStream(Goffset from, bool limitedToSize, Goffset size, Object&& ofStream) override
    {
        return new InputStream(m_input, from, limitedToSize, size, std::move(ofStream));
    }

private:
    Goffset currentPos() const override { return m_position; }
    void setCurrentPos(Goffset position) override { m_position = position; }

    Goffset read(char* to, Goffset size) override
    {
        if (m_input->isDry())
            return 0;
        const Goffset got = m_input->isInMemory() ? m_input->read(m_position, to, size) : readBlock(to, size);
        m_position += got;
        return got;
    }

    /// Poppler asks for a kilobyte at a time; the file is asked for more at once.
    Goffset readBlock(char* to, Goffset size)
    {
        Goffset into = m_position - m_blockStart;
        if (into < 0 || into >= static_cast<Goffset>(m_block.size())) {
            m_block.resize(blockSize);
            m_blockStart = m_position;
            m_block.resize(static_cast<size_t>(m_input->read(m_position, m_block.data(), blockSize)));
            into = 0;
        }
        const Goffset got = std::min(size, static_cast<Goffset>(m_block.size()) - into);
        std::copy_n(m_block.data() + into, got, to);
        return got;
    }

    static constexpr qint64 blockSize = 16 * 1024;

    std::shared_ptr<DrawingInput> m_input;
    Goffset m_position = 0;
    Goffset m_blockStart = 0;
    std::vector<char> m_block;
};

} // namespace

DrawingInput::DrawingInput(std::shared_ptr<const SourceFile> file) : m_file(std::move(file)) {}

DrawingInput::DrawingInput(QByteArray bytes) : m_bytes(std::move(bytes)) {}

BaseStream* DrawingInput::newStream()
{
    return new InputStream(shared_from_this(), 0, false, size(), Object(objNull));
}

bool DrawingInput::isDry()
{
    if (m_budget && m_budget->isOverdue())
        m_ranDry = true;
    return m_ranDry;
}

qint64 DrawingInput::read(qint64 position, char* to, qint64 size) const
{
    if (m_file)
        return std::max<qint64>(m_file->read(position, to, size), 0);
    if (position < 0 || position >= m_bytes.size())
        return 0;
    const qint64 got = std::min<qint64>(m_bytes.size() - position, size);
    std::copy_n(m_bytes.constData() + position, got, to);
    return got;
}

} // namespace folvane::pdf
