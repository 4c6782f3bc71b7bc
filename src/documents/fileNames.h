#pragma once

#include <QString>
#include <QUrl>

#include <optional>

namespace folvane {

// Names of files, as messages show them and as new files get them.

struct FileName {
    QString name;      ///< without its ending
    QString extension; ///< without the dot
};

/// The last component of the path with its ending; of a folder too, with or without a slash behind it.
QString lastPathComponent(const QUrl& url);
/// "report" for report.pdf. The dot of a hidden file begins no ending.
QString nameWithoutEnding(const QUrl& url);
/// The name with ".pdf", which is not added when it is there.
QString withPdfEnding(const QString& name);
/// The folder that holds the file; where a panel starts.
QUrl folderOf(const QUrl& file);
std::optional<QUrl> folderOf(const std::optional<QUrl>& file);
/// `base` and `tail`, such as " (edited)". The base is cut where that would be longer than the name of a file can be,
/// with an ending and a number behind it.
QString nameWithTail(const QString& base, const QString& tail);
/// How many bytes of UTF-8 such a name may have.
qsizetype longestSuggestedName();
/// "name.ext" in the folder for the count 1, then "name 2.ext", "name 3.ext" …
QUrl numberedFile(const QUrl& folder, const FileName& file, int count);

} // namespace folvane
