#include "pdf/images/jpxHeader.h"

#include <QtEndian>

#include <limits>

namespace folvane::pdf {

namespace {

constexpr qsizetype sizeSegment = 42; // bytes from the start of the code stream to behind Csiz
const QByteArray startOfCodestream("\xff\x4f\xff\x51", 4);

} // namespace

std::optional<JpxHeader> jpxHeader(const QByteArray& bytes)
{
    const qsizetype start = bytes.indexOf(startOfCodestream);
    if (start < 0 || bytes.size() - start < sizeSegment)
        return std::nullopt;
    const auto number = [&](qsizetype at) {
        return qint64(qFromBigEndian<quint32>(bytes.constData() + start + at));
    };
    const qint64 width = number(8) - number(16), height = number(12) - number(20);
    const qint64 most = std::numeric_limits<int>::max();
    if (width < 1 || height < 1 || width > most || height > most)
        return std::nullopt;
    return JpxHeader{QSize(static_cast<int>(width), static_cast<int>(height)),
                     qFromBigEndian<quint16>(bytes.constData() + start + 40),
                     bytes.first(start).contains("pclr")};
}

} // namespace folvane::pdf
