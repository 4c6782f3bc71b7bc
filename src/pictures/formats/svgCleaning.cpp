#include "pictures/formats/svgCleaning.h"

#include "pictures/formats/pictureFormat.h"

#include <QXmlStreamReader>
#include <QXmlStreamWriter>

namespace folvane {

namespace {

constexpr int maxDepth = 256;
constexpr qsizetype maxCleanedBytes = 256 << 20;

bool isPlainBitmap(QByteArrayView bytes)
{
    switch (pictureFormat(bytes)) {
    case PictureFormat::Jpeg:
    case PictureFormat::Png:
    case PictureFormat::Gif:
    case PictureFormat::WebP: return true;
    default: return false;
    }
}

/// "data:image/png;base64,…" with a bitmap in it. By the bytes, because the painter looks at nothing else.
bool isEmbeddedBitmap(const QString& link)
{
    const qsizetype comma = link.indexOf(u',');
    if (comma < 0 || !link.startsWith(u"data:") || !QStringView(link).first(comma).endsWith(u";base64"))
        return false;
    return isPlainBitmap(QByteArray::fromBase64(link.sliced(comma + 1).toLatin1()));
}

bool staysInside(const QXmlStreamAttribute& attribute)
{
    if (attribute.name() != u"href" && attribute.name() != u"src" && attribute.name() != u"base")
        return true;
    const QString link = attribute.value().toString().trimmed();
    return link.startsWith(u'#') || isEmbeddedBitmap(link);
}

void copyElement(const QXmlStreamReader& from, QXmlStreamWriter& to)
{
    to.writeStartElement(from.qualifiedName().toString());
    for (const QXmlStreamNamespaceDeclaration& declared : from.namespaceDeclarations()) {
        const QString prefix = declared.prefix().toString();
        to.writeAttribute(prefix.isEmpty() ? QStringLiteral("xmlns") : QStringLiteral("xmlns:") + prefix,
                          declared.namespaceUri().toString());
    }
    for (const QXmlStreamAttribute& attribute : from.attributes())
        if (staysInside(attribute))
            to.writeAttribute(attribute.qualifiedName().toString(), attribute.value().toString());
}

/// Comments, document types and processing instructions are left out; entities have become text.
void copyToken(const QXmlStreamReader& from, QXmlStreamWriter& to)
{
    if (from.isStartElement())
        copyElement(from, to);
    else if (from.isEndElement())
        to.writeEndElement();
    else if (from.isCharacters())
        to.writeCharacters(from.text().toString());
}

} // namespace

std::optional<QByteArray> selfContainedSvg(const QByteArray& svg)
{
    QByteArray cleaned;
    QXmlStreamReader reader(svg);
    QXmlStreamWriter writer(&cleaned);
    int depth = 0;
    while (!reader.atEnd()) {
        reader.readNext();
        depth += reader.isStartElement() ? 1 : reader.isEndElement() ? -1 : 0;
        if (depth > maxDepth || cleaned.size() > maxCleanedBytes)
            return std::nullopt;
        copyToken(reader, writer);
    }
    return reader.hasError() ? std::nullopt : std::optional(cleaned);
}

} // namespace folvane
