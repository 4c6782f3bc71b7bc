#include "documents/fileNames.h"

#include <QTextBoundaryFinder>

#include <algorithm>

namespace folvane {

namespace {

constexpr qsizetype longestName = 255; // bytes that Linux file systems take
constexpr qsizetype longestEnding = 9; // " 9999" and ".pdf"

/// As many whole characters as fit into so many bytes of UTF-8.
QString cutTo(const QString& text, qsizetype bytes)
{
    if (text.toUtf8().size() <= bytes)
        return text;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    qsizetype end = 0;
    for (qsizetype next = 0; next >= 0 && QStringView(text).first(next).toUtf8().size() <= bytes;
         next = finder.toNextBoundary())
        end = next;
    return text.first(end).trimmed();
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

std::optional<QUrl> folderOf(const std::optional<QUrl>& file)
{
    return file ? std::optional(folderOf(*file)) : std::nullopt;
}

qsizetype longestSuggestedName()
{
    return longestName - longestEnding;
}

QString nameWithTail(const QString& base, const QString& tail)
{
    return cutTo(base, std::max<qsizetype>(longestSuggestedName() - tail.toUtf8().size(), 1)) + tail;
}

// Put together by hand: a path that begins with a colon would be taken for one of the program's own resources.
QUrl numberedFile(const QUrl& folder, const FileName& file, int count)
{
    const QString number = count > 1 ? u' ' + QString::number(count) : QString();
    return QUrl::fromLocalFile(folder.toLocalFile() + u'/' + file.name + number + u'.' + file.extension);
}

} // namespace folvane
