#pragma once

#include <QString>
#include <QUrl>

namespace folvane {

/// What a sample page looks like.
enum class Paper { Upright, Mixed };

/// A PDF whose page N says "WORD N"; the same bytes each time.
QUrl makeSample(const QString& path, int pages, Paper paper = Paper::Upright,
                const QString& word = "Chapter");

/// The same with this password, locked by another program than ours.
QUrl makeLocked(const QString& path, const QString& password);

/// A picture file.
QUrl makePicture(const QString& path);

} // namespace folvane
