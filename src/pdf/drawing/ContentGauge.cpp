#include "pdf/drawing/ContentGauge.h"

#include "pdf/drawing/DrawingBudget.h"

#include <Array.h>
#include <Dict.h>
#include <Stream.h>

#include <array>

namespace folvane::pdf {

namespace {

constexpr size_t pieceSize = 4096;

/// A content stream, unpacked, whose bytes are counted as they go by.
class MeasuredStream final : public Stream {
public:
    MeasuredStream(Object content, ContentGauge& gauge) : m_content(std::move(content)), m_gauge(gauge) {}

    StreamKind getKind() const override { return stream().getKind(); }
    void reset() override
    {
        m_next = m_end = 0;
        stream().reset();
    }
    void close() override { stream().close(); }
    int getChar() override { return hasMore() ? m_piece[m_next++] : EOF; }
    int lookChar() override { return hasMore() ? m_piece[m_next] : EOF; }
    int getUnfilteredChar() override { return stream().getUnfilteredChar(); }
    void unfilteredReset() override { stream().unfilteredReset(); }
    Goffset getPos() override { return stream().getPos(); }
    void setPos(Goffset position, int direction) override { stream().setPos(position, direction); }
    bool isBinary(bool last) const override { return stream().isBinary(last); }
    BaseStream* getBaseStream() override { return stream().getBaseStream(); }
    Stream* getUndecodedStream() override { return stream().getUndecodedStream(); }
    Dict* getDict() override { return stream().getDict(); }
    Object* getDictObject() override { return stream().getDictObject(); }
    Stream* getNextStream() const override { return &stream(); }

private:
    Stream& stream() const { return *m_content.getStream(); }

    bool hasMore()
    {
        if (m_next < m_end)
            return true;
        m_next = m_end = 0;
        const int got = stream().doGetChars(static_cast<int>(m_piece.size()), m_piece.data());
        if (got > 0 && m_gauge.add(got))
            m_end = static_cast<size_t>(got);
        return m_end > 0;
    }

    Object m_content;
    ContentGauge& m_gauge;
    std::array<unsigned char, pieceSize> m_piece;
    size_t m_next = 0;
    size_t m_end = 0;
};

/// It cannot become large: one filter makes about a thousand bytes out of one at most.
bool isSmall(Stream& stream)
{
    constexpr Goffset small = 16 * 1024;
    return stream.getBaseStream()->getLength() <= small && !stream.getDict()->lookup("Filter").isArray();
}

} // namespace

Object ContentGauge::measured(Object contents, XRef* objects)
{
    if (contents.isStream())
        return measuredStream(std::move(contents));
    if (!contents.isArray())
        return contents;
    auto* parts = new Array(objects);
    for (int i = 0; i < contents.arrayGetLength(); ++i) {
        Object part = contents.arrayGet(i);
        parts->add(part.isStream() ? measuredStream(std::move(part)) : std::move(part));
    }
    return Object(parts);
}

Object ContentGauge::measuredStream(Object content)
{
    return Object(static_cast<Stream*>(new MeasuredStream(std::move(content), *this)));
}

void ContentGauge::measure(Object& stream)
{
    Stream& content = *stream.getStream();
    if (isSmall(content) || !m_known.insert(content.getBaseStream()->getStart()).second)
        return;
    std::array<unsigned char, pieceSize> piece;
    content.reset();
    int got = 0;
    do {
        got = content.doGetChars(static_cast<int>(piece.size()), piece.data());
    } while (got > 0 && add(got) && !m_budget.isOver());
    content.close();
}

bool ContentGauge::add(qint64 bytes)
{
    m_inAll += bytes;
    if (m_inAll > most)
        m_budget.endAsTooLarge();
    return m_budget.end() != DrawingBudget::End::TooLarge;
}

} // namespace folvane::pdf
