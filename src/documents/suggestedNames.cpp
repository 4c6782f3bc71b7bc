#include "documents/suggestedNames.h"

#include "documents/AppModel.h"
#include "documents/PageRanges.h"
#include "documents/fileNames.h"

namespace folvane {

namespace {

constexpr qsizetype longestName = 255; // bytes that Linux file systems take

QString inBrackets(const QString& name, const QString& words)
{
    return name + QStringLiteral(" (") + words + u')';
}

/// The list (ASCII), cut between two runs so that it takes no more than `room` bytes, if one run does.
QString cutTo(const QString& list, qsizetype room)
{
    const QString more = QStringLiteral(", …");
    const qsizetype left = room - more.toUtf8().size();
    if (list.size() <= room || left < 1)
        return list;
    const qsizetype cut = list.lastIndexOf(QStringLiteral(", "), left);
    return cut < 0 ? list : list.left(cut) + more;
}

} // namespace

QString suggestedName(const OpenFile& file)
{
    if (!file.isPDF)
        return file.name;
    return inBrackets(file.name, file.hasStamps() ? AppModel::tr("signed") : AppModel::tr("edited"));
}

QString suggestedExtractName(const OpenFile& file)
{
    const QString word = AppModel::tr("pages") + u' ';
    const qsizetype room = longestName - withPdfEnding(inBrackets(file.name, word)).toUtf8().size();
    return inBrackets(file.name, word + cutTo(PageRanges::describe(file.selectedPositions()), room));
}

} // namespace folvane
