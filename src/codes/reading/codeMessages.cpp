#include "codes/reading/codeMessages.h"

#include <QDataStream>
#include <QIODevice>
#include <QStringDecoder>

#include <algorithm>
#include <cmath>

namespace folvane {

namespace {

std::optional<QString> textFrom(const QByteArray& utf8)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(utf8);
    return decoder.hasError() ? std::nullopt : std::optional(text);
}

bool isSomewhere(const QPointF& corner)
{
    return std::isfinite(corner.x()) && std::isfinite(corner.y());
}

std::optional<CodeObservation> nextCode(QDataStream& stream)
{
    CodeObservation code;
    quint8 symbology = 0;
    QByteArray utf8;
    stream >> symbology >> utf8;
    for (QPointF& corner : code.corners)
        stream >> corner;
    const std::optional<QString> text = textFrom(utf8);
    if (stream.status() != QDataStream::Ok || !text || symbology > quint8(CodeSymbology::Other)
        || !std::ranges::all_of(code.corners, isSomewhere))
        return std::nullopt;
    code.symbology = CodeSymbology(symbology);
    code.payload = *text;
    return code;
}

} // namespace

QByteArray encodedCodes(const std::vector<CodeObservation>& codes)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << quint32(codes.size());
    for (const CodeObservation& code : codes) {
        stream << quint8(code.symbology) << code.payload.toUtf8();
        for (const QPointF& corner : code.corners)
            stream << corner;
    }
    return bytes;
}

std::optional<std::vector<CodeObservation>> decodedCodes(const QByteArray& bytes)
{
    QDataStream stream(bytes);
    quint32 count = 0;
    stream >> count;
    if (stream.status() != QDataStream::Ok || count > maxCodesInPicture)
        return std::nullopt;
    std::vector<CodeObservation> codes;
    while (codes.size() < count) {
        const std::optional<CodeObservation> code = nextCode(stream);
        if (!code)
            return std::nullopt;
        codes.push_back(*code);
    }
    return stream.atEnd() ? std::optional(codes) : std::nullopt;
}

} // namespace folvane
