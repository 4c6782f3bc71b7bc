#include "pictures/formats/tiffTags.h"

#include <QtEndian>

#include <limits>
#include <optional>

namespace folvane {

namespace {

constexpr quint16 widthTag = 0x0100, heightTag = 0x0101, orientationTag = 0x0112, samplesTag = 0x0115,
                  profileTag = 0x8773;
constexpr quint16 typeShort = 3;
// A chain may run in a circle, and its directories may share their entries.
constexpr int mostDirectories = 1000;
constexpr quint64 mostEntries = 4096; // of one directory

class TiffBlock {
public:
    explicit TiffBlock(QByteArrayView bytes)
        : m_bytes(bytes), m_bigEndian(bytes.startsWith("MM")), m_isBig(at<quint16>(2) == 43)
    {
    }

    bool isTiff() const
    {
        return (m_bytes.startsWith("II") || m_bytes.startsWith("MM")) && (m_isBig || at<quint16>(2) == 42);
    }

    quint64 firstDirectory() const { return isTiff() ? offsetAt(m_isBig ? 8 : 4) : 0; }

    quint64 directoryBehind(quint64 directory) const
    {
        return offsetAt(directory + countSize() + entries(directory) * entrySize());
    }

    /// Where the entry stands.
    std::optional<quint64> find(quint64 directory, quint16 tag) const
    {
        const quint64 count = directory == 0 ? 0 : std::min(entries(directory), mostEntries);
        for (quint64 i = 0; i < count; ++i)
            if (const quint64 entry = directory + countSize() + i * entrySize(); at<quint16>(entry) == tag)
                return entry;
        return std::nullopt;
    }

    quint16 type(quint64 entry) const { return at<quint16>(entry + 2); }
    quint64 count(quint64 entry) const { return offsetAt(entry + 4); }
    /// What stands in the entry itself: a number that fits, or where the value lies.
    quint64 number(quint64 entry) const
    {
        const quint64 value = entry + (m_isBig ? 12 : 8);
        return type(entry) == typeShort ? at<quint16>(value) : offsetAt(value);
    }

private:
    /// In the block's byte order; 0 beyond its end.
    template <typename Number>
    Number at(quint64 offset) const
    {
        const auto size = quint64(m_bytes.size());
        if (size < sizeof(Number) || offset > size - sizeof(Number))
            return 0;
        const char* from = m_bytes.data() + offset;
        return m_bigEndian ? qFromBigEndian<Number>(from) : qFromLittleEndian<Number>(from);
    }

    quint64 offsetAt(quint64 offset) const { return m_isBig ? at<quint64>(offset) : at<quint32>(offset); }
    quint64 entries(quint64 directory) const
    {
        return std::min<quint64>(m_isBig ? at<quint64>(directory) : at<quint16>(directory),
                                 std::numeric_limits<quint16>::max());
    }
    quint64 countSize() const { return m_isBig ? 8 : 2; }
    quint64 entrySize() const { return m_isBig ? 20 : 12; }

    QByteArrayView m_bytes;
    bool m_bigEndian;
    bool m_isBig;
};

/// Sides beyond what a picture can have count as none.
quint64 pixelsOf(const TiffBlock& block, quint64 directory)
{
    const auto side = [&](quint16 tag) {
        const std::optional<quint64> entry = block.find(directory, tag);
        const quint64 value = entry ? block.number(*entry) : 0;
        return value <= quint64(std::numeric_limits<int>::max()) ? value : 0;
    };
    return side(widthTag) * side(heightTag);
}

TiffDirectory firstTiffDirectory(QByteArrayView tiff)
{
    return {0, TiffBlock(tiff).firstDirectory()};
}

} // namespace

TiffDirectory largestTiffDirectory(QByteArrayView tiff)
{
    const TiffBlock block(tiff);
    TiffDirectory next = firstTiffDirectory(tiff), largest = next;
    quint64 most = pixelsOf(block, largest.offset);
    while (next.offset != 0 && next.index < mostDirectories) {
        next = {next.index + 1, block.directoryBehind(next.offset)};
        if (const quint64 pixels = pixelsOf(block, next.offset); pixels > most) {
            most = pixels;
            largest = next;
        }
    }
    return largest;
}

quint64 tiffSamplesPerPixel(QByteArrayView tiff, const TiffDirectory& directory)
{
    const TiffBlock block(tiff);
    const std::optional<quint64> entry = block.find(directory.offset, samplesTag);
    return entry ? block.number(*entry) : 1;
}

int tiffOrientation(QByteArrayView tiff, const TiffDirectory& directory)
{
    const TiffBlock block(tiff);
    const std::optional<quint64> entry = block.find(directory.offset, orientationTag);
    if (!entry || block.type(*entry) != typeShort)
        return 1;
    const quint64 value = block.number(*entry);
    return value >= 1 && value <= 8 ? static_cast<int>(value) : 1;
}

int exifOrientation(QByteArrayView exif)
{
    return tiffOrientation(exif, firstTiffDirectory(exif));
}

QByteArrayView tiffProfile(QByteArrayView tiff, const TiffDirectory& directory)
{
    const TiffBlock block(tiff);
    const std::optional<quint64> entry = block.find(directory.offset, profileTag);
    if (!entry)
        return {};
    const quint64 size = block.count(*entry), offset = block.number(*entry), all = quint64(tiff.size());
    return size <= all && offset <= all - size ? tiff.sliced(qsizetype(offset), qsizetype(size))
                                               : QByteArrayView();
}

} // namespace folvane
