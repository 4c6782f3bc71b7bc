#include "tools/stamps/stampFromData.h"

#include "platform/files/fileKind.h"

#include <QBuffer>
#include <QImage>
#include <QMimeData>
#include <QMimeDatabase>

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

QList<QUrl> localFiles(const QList<QUrl>& urls)
{
    QList<QUrl> files = urls;
    files.removeIf([](const QUrl& url) { return !url.isLocalFile(); });
    return files;
}

// Some file managers copy files in a format of their own alone: what is to be done with them, then a URL a line.
QList<QUrl> copiedFiles(const QMimeData& data)
{
    QList<QUrl> files = localFiles(data.urls());
    if (!files.isEmpty())
        return files;
    for (const QString& line : linesOf(QString::fromUtf8(data.data("x-special/gnome-copied-files"))))
        files.append(localFile(line));
    return localFiles(files);
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

bool isReadable(const QString& format)
{
    if (!format.startsWith(QLatin1String("image/")))
        return false;
    const QStringList endings = QMimeDatabase().mimeTypeForName(format).suffixes();
    return std::ranges::any_of(endings, [](const QString& ending) {
        return fileKind(QUrl::fromLocalFile("picture." + ending)) == FileKind::Picture;
    });
}

/// Those that lose nothing first, then as they are offered.
QStringList pictureFormats(const QMimeData& data)
{
    QStringList rest = data.formats();
    rest.removeIf([](const QString& format) { return !isReadable(format); });
    QStringList formats;
    for (const char* best : {"image/png", "image/tiff", "image/jpeg"}) {
        if (rest.removeOne(best))
            formats.append(best);
    }
    return formats + rest;
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
    for (const QString& format : pictureFormats(data)) {
        if (const QByteArray bytes = data.data(format); !bytes.isEmpty())
            return StampSource{bytes};
    }
    const QByteArray png = pngOf(data.imageData().value<QImage>());
    return png.isEmpty() ? std::nullopt : std::optional(StampSource{png});
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
    if (const QList<QUrl> files = copiedFiles(data); !files.isEmpty())
        return firstPicture(files);
    const std::optional<StampSource> bytes = bytesOf(data);
    return bytes ? bytes : pictureInText(data, gesture);
}

bool offersStamp(const QMimeData& data, StampGesture gesture)
{
    if (const QList<QUrl> files = copiedFiles(data); !files.isEmpty())
        return firstPicture(files).has_value();
    return data.hasImage() || !pictureFormats(data).isEmpty() || pictureInText(data, gesture);
}

} // namespace folvane
