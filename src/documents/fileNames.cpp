#include "documents/fileNames.h"

#include <QDir>
#include <QFileInfo>

namespace folvane {

namespace {

/// A link that leads nowhere takes its name, too.
bool isFree(const QString& path)
{
    const QFileInfo info(path);
    return !info.exists() && !info.isSymLink();
}

} // namespace

QString lastPathComponent(const QUrl& url)
{
    return url.adjusted(QUrl::StripTrailingSlash).fileName();
}

QString nameWithoutEnding(const QUrl& url)
{
    const QString name = lastPathComponent(url);
    const qsizetype dot = name.lastIndexOf(u'.');
    return dot > 0 ? name.left(dot) : name;
}

QString withPdfEnding(const QString& name)
{
    const QString ending = QStringLiteral(".pdf");
    return name.endsWith(ending) ? name : name + ending;
}

QUrl folderOf(const QUrl& file)
{
    return file.adjusted(QUrl::StripTrailingSlash).adjusted(QUrl::RemoveFilename | QUrl::StripTrailingSlash);
}

QUrl freeName(const QUrl& folder, const QString& name, const QString& extension)
{
    const QDir place(folder.toLocalFile());
    QString path = place.filePath(name + u'.' + extension);
    for (int count = 2; !isFree(path); ++count)
        path = place.filePath(name + u' ' + QString::number(count) + u'.' + extension);
    return QUrl::fromLocalFile(path);
}

} // namespace folvane
