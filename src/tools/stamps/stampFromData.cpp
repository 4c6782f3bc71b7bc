#include "tools/stamps/stampFromData.h"

#include "platform/desktop/offers.h"
#include "platform/files/fileKind.h"

#include <QBuffer>
#include <QImage>
#include <QMimeData>

#include <algorithm>

namespace folvane {

namespace {

/// The local file that a line names by its path or URL; empty when it is anything else.
QUrl localFile(const QString& line)
{
    if (line.startsWith(u'/'))
        return QUrl::fromLocalFile(line);
    const QUrl url(line);
    return url.isLocalFile() ? url : QUrl();
}

QStringList linesOf(const QString& text)
{
    QStringList lines;
    for (const QString& line : text.split(u'\n'))
        lines.append(line.trimmed());
    lines.removeAll(QString());
    return lines;
}

// One line that is no file makes it a text that only speaks of some.
QList<QUrl> filesInText(const QString& text)
{
    QList<QUrl> files;
    for (const QString& line : linesOf(text))
        files.append(localFile(line));
    return files.contains(QUrl()) ? QList<QUrl>() : files;
}

std::optional<StampSource> firstPicture(const QList<QUrl>& files)
{
    const auto isPicture = [](const QUrl& file) { return fileKind(file) == FileKind::Picture; };
    const auto found = std::ranges::find_if(files, isPicture);
    return found == files.end() ? std::nullopt : std::optional(StampSource{*found});
}

QByteArray pngOf(const QImage& image)
{
    QByteArray png;
    QBuffer buffer(&png);
    if (!image.isNull())
        image.save(&buffer, "PNG");
    return png;
}

std::optional<StampSource> bytesOf(const QMimeData& data)
{
    const QByteArray offered = offeredPicture(data);
    const QByteArray bytes = offered.isEmpty() ? pngOf(data.imageData().value<QImage>()) : offered;
    return bytes.isEmpty() ? std::nullopt : std::optional(StampSource{bytes});
}

std::optional<StampSource> pictureInText(const QMimeData& data, StampGesture gesture)
{
    return gesture == StampGesture::Paste ? firstPicture(filesInText(data.text())) : std::nullopt;
}

} // namespace

// Where there are files, pixels are their icon: file managers offer it beside them. A browser's picture comes with the URL of where
// it is from, which is no local file, so that its bytes are taken.
std::optional<StampSource> stampFrom(const QMimeData& data, StampGesture gesture)
{
    if (const QList<QUrl> files = offeredFiles(data); !files.isEmpty())
        return firstPicture(files);
    const std::optional<StampSource> bytes = bytesOf(data);
    return bytes ? bytes : pictureInText(data, gesture);
}

bool offersStamp(const QMimeData& data, StampGesture gesture)
{
    if (const QList<QUrl> files = offeredFiles(data); !files.isEmpty())
        return firstPicture(files).has_value();
    return offersPicture(data) || pictureInText(data, gesture);
}

} // namespace folvane
