// Reading the markers of a JPEG file (ITU-T T.81, annex B) without decoding it.

#include "pictures/jpeg.h"

#include "pictures/tiffTags.h"

#include <QMap>
#include <QtEndian>

#include <algorithm>

namespace folvane {

namespace {

constexpr uchar markerSoi = 0xD8, markerEoi = 0xD9, markerSos = 0xDA;
constexpr uchar markerApp0 = 0xE0, markerApp1 = 0xE1, markerApp2 = 0xE2, markerApp14 = 0xEE;
constexpr qsizetype iccHeaderSize = 14; // "ICC_PROFILE", 0, number of the part, number of parts

/// One marker with its content, without marker and length.
struct Segment {
    uchar marker;
    QByteArrayView content;

    int byte(qsizetype at) const { return at < content.size() ? uchar(content[at]) : 0; }
    int word(qsizetype at) const { return byte(at) << 8 | byte(at + 1); }
};

bool isStartOfFrame(uchar marker)
{
    return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

bool standsAlone(uchar marker)
{
    return marker == 0x01 || (marker >= 0xD0 && marker <= markerSoi);
}

/// Walks over the segments before the first scan.
class Segments {
public:
    explicit Segments(QByteArrayView bytes) : m_bytes(bytes) {}

    /// Nothing at the first scan, at the end, and where the file is cut or broken.
    std::optional<Segment> next()
    {
        const std::optional<uchar> marker = nextMarker();
        if (!marker || *marker == markerSos || *marker == markerEoi || m_at + 2 > m_bytes.size())
            return std::nullopt;
        const qsizetype length = qFromBigEndian<quint16>(m_bytes.data() + m_at);
        if (length < 2 || m_at + length > m_bytes.size())
            return std::nullopt;
        const Segment segment{*marker, m_bytes.sliced(m_at + 2, length - 2)};
        m_at += length;
        return segment;
    }

private:
    std::optional<uchar> nextMarker()
    {
        while (m_at + 1 < m_bytes.size()) {
            const uchar here = uchar(m_bytes[m_at]), marker = uchar(m_bytes[m_at + 1]);
            const bool found = here == 0xFF && marker != 0xFF && marker != 0;
            m_at += found ? 2 : 1; // fill bytes and rubbish are passed over, as decoders do
            if (found && !standsAlone(marker))
                return marker;
        }
        return std::nullopt;
    }

    QByteArrayView m_bytes;
    qsizetype m_at = 0;
};

/// What the segments say, before it is made up into JpegInfo.
struct Header {
    JpegInfo info;
    uchar frameMarker = 0;
    QByteArray componentIds;
    bool hasJfif = false;
    std::optional<int> adobeTransform;
    QMap<int, QByteArrayView> iccParts;
    int iccPartCount = 0;
};

void readFrame(const Segment& segment, Header& header)
{
    header.frameMarker = segment.marker;
    header.info.bitsPerSample = segment.byte(0);
    header.info.height = segment.word(1);
    header.info.width = segment.word(3);
    header.info.components = segment.byte(5);
    header.info.progressive = (segment.marker & 0x03) == 0x02;
    header.info.arithmetic = segment.marker > 0xC8;
    for (int i = 0; i < header.info.components; ++i)
        header.componentIds.append(char(segment.byte(6 + 3 * i)));
}

void readIccPart(const Segment& segment, Header& header)
{
    if (!segment.content.startsWith(QByteArrayView("ICC_PROFILE\0", 12))
        || segment.content.size() < iccHeaderSize)
        return;
    header.iccPartCount = segment.byte(13);
    header.iccParts.insert(segment.byte(12), segment.content.sliced(iccHeaderSize));
}

void readSegment(const Segment& segment, Header& header)
{
    if (isStartOfFrame(segment.marker) && header.frameMarker == 0)
        readFrame(segment, header);
    else if (segment.marker == markerApp0 && segment.content.startsWith(QByteArrayView("JFIF\0", 5)))
        header.hasJfif = true;
    else if (segment.marker == markerApp1 && segment.content.startsWith(QByteArrayView("Exif\0", 5)))
        header.info.orientation =
            exifOrientation(segment.content.sliced(std::min<qsizetype>(6, segment.content.size())));
    else if (segment.marker == markerApp2)
        readIccPart(segment, header);
    else if (segment.marker == markerApp14 && segment.content.startsWith("Adobe")
             && segment.content.size() >= 12)
        header.adobeTransform = segment.byte(11);
}

/// All parts in their order; nothing when one is missing.
QByteArray joinedIcc(const Header& header)
{
    QByteArray profile;
    for (int part = 1; part <= header.iccPartCount; ++part) {
        if (!header.iccParts.contains(part))
            return {};
        profile.append(header.iccParts[part]);
    }
    return profile;
}

// PDF goes by Adobe's marker and takes YCbCr without one; decoders of files go by JFIF first, then by Adobe's
// marker, then by the components' names. Only where all come to the same are the colours safe.
bool colourModelIsAgreed(const Header& header)
{
    if (header.info.components == 1)
        return true;
    if (header.info.components != 3)
        return false;
    if (header.adobeTransform)
        return *header.adobeTransform == 1 || (*header.adobeTransform == 0 && !header.hasJfif);
    return header.hasJfif || header.componentIds == QByteArray("\1\2\3");
}

bool isReadEverywhere(const Header& header)
{
    const bool coding = header.frameMarker >= 0xC0 && header.frameMarker <= 0xC2;
    return coding && header.info.bitsPerSample == 8 && colourModelIsAgreed(header);
}

bool isSane(const JpegInfo& info)
{
    return info.width > 0 && info.height > 0 && info.components > 0
           && qint64(info.width) * info.height <= maxJpegPixels;
}

} // namespace

std::optional<JpegInfo> inspectJpeg(const QByteArray& bytes)
{
    if (!bytes.startsWith("\xFF\xD8\xFF"))
        return std::nullopt;
    Header header;
    Segments segments(bytes);
    while (const std::optional<Segment> segment = segments.next())
        readSegment(*segment, header);
    if (!isSane(header.info))
        return std::nullopt;
    header.info.iccProfile = joinedIcc(header);
    header.info.isRgbOrGrey = isReadEverywhere(header);
    return header.info;
}

} // namespace folvane
