#include "platform/tiffTags.h"

#include <QtEndian>

#include <optional>

namespace folvane {

namespace {

constexpr quint16 orientationTag = 0x0112, profileTag = 0x8773;
constexpr quint16 typeShort = 3;
constexpr quint64 entrySize = 12;

class TiffBlock {
public:
    explicit TiffBlock(QByteArrayView bytes) : m_bytes(bytes), m_bigEndian(bytes.startsWith("MM")) {}

    bool isTiff() const
    {
        return m_bytes.startsWith(QByteArrayView("II*\0", 4))
               || m_bytes.startsWith(QByteArrayView("MM\0*", 4));
    }

    /// In the block's byte order; 0 beyond its end.
    template <typename Number>
    Number at(quint64 offset) const
    {
        if (offset + sizeof(Number) > quint64(m_bytes.size()))
            return 0;
        const char* from = m_bytes.data() + offset;
        return m_bigEndian ? qFromBigEndian<Number>(from) : qFromLittleEndian<Number>(from);
    }

    /// Where the entry stands.
    std::optional<quint64> find(quint16 tag) const
    {
        const quint64 directory = at<quint32>(4);
        const int entries = isTiff() ? at<quint16>(directory) : 0;
        for (int i = 0; i < entries; ++i)
            if (const quint64 entry = directory + 2 + quint64(i) * entrySize; at<quint16>(entry) == tag)
                return entry;
        return std::nullopt;
    }

private:
    QByteArrayView m_bytes;
    bool m_bigEndian;
};

} // namespace

int tiffOrientation(QByteArrayView tiff)
{
    const TiffBlock block(tiff);
    const std::optional<quint64> entry = block.find(orientationTag);
    if (!entry || block.at<quint16>(*entry + 2) != typeShort)
        return 1;
    const int value = block.at<quint16>(*entry + 8);
    return value >= 1 && value <= 8 ? value : 1;
}

QByteArrayView tiffProfile(QByteArrayView tiff)
{
    const TiffBlock block(tiff);
    const std::optional<quint64> entry = block.find(profileTag);
    if (!entry)
        return {};
    const qsizetype size = block.at<quint32>(*entry + 4), offset = block.at<quint32>(*entry + 8);
    return size <= tiff.size() && offset <= tiff.size() - size ? tiff.sliced(offset, size) : QByteArrayView();
}

} // namespace folvane
