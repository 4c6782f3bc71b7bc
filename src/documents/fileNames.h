#pragma once

#include <QString>
#include <QUrl>

namespace folvane {

// Names of files, as messages show them and as new files get them.

/// The last component of the path with its ending; of a folder too, with or without a slash behind it.
QString lastPathComponent(const QUrl& url);
/// "report" for report.pdf. The dot of a hidden file begins no ending.
QString nameWithoutEnding(const QUrl& url);
/// The name with ".pdf", which is not added when it is there.
QString withPdfEnding(const QString& name);
/// The folder that holds the file.
QUrl folderOf(const QUrl& file);
/// A path in the folder at which nothing exists: "name.ext", else "name 2.ext", "name 3.ext" …
QUrl freeName(const QUrl& folder, const QString& name, const QString& extension);

} // namespace folvane
