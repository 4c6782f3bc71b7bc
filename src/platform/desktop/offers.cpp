#include "platform/desktop/offers.h"

#include "platform/files/fileKind.h"

#include <QMimeData>
#include <QMimeDatabase>

#include <algorithm>

namespace folvane {

namespace {

QList<QUrl> localFiles(QList<QUrl> urls)
{
    urls.removeIf([](const QUrl& url) { return !url.isLocalFile(); });
    return urls;
}

QList<QUrl> urlsInLines(const QByteArray& lines)
{
    QList<QUrl> urls;
    for (const QByteArray& line : lines.split('\n'))
        urls.append(QUrl(QString::fromUtf8(line.trimmed())));
    return urls;
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

} // namespace

// Some file managers copy files in a format of their own alone: what is to be done with them, then a URL a line.
QList<QUrl> offeredFiles(const QMimeData& data)
{
    const QList<QUrl> files = localFiles(data.urls());
    return files.isEmpty() ? localFiles(urlsInLines(data.data("x-special/gnome-copied-files"))) : files;
}

QByteArray offeredPicture(const QMimeData& data)
{
    for (const QString& format : pictureFormats(data)) {
        if (const QByteArray bytes = data.data(format); !bytes.isEmpty())
            return bytes;
    }
    return {};
}

bool offersPicture(const QMimeData& data)
{
    return data.hasImage() || !pictureFormats(data).isEmpty();
}

} // namespace folvane
