#include "documents/suggestedNames.h"

#include "documents/AppModel.h"
#include "documents/fileNames.h"
#include "documents/pages/PageRanges.h"

#include <algorithm>

namespace folvane {

namespace {

constexpr qsizetype leastForAList = 40; // bytes; a longer name makes room for it

QString inBrackets(const QString& words)
{
    return QStringLiteral(" (") + words + u')';
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
        return nameWithTail(file.name, {});
    return suggestedName(file.name, file.hasStamps() ? AppModel::tr("signed") : AppModel::tr("edited"));
}

QString suggestedName(const QString& name, const QString& words)
{
    return nameWithTail(name, inBrackets(words));
}

QString suggestedExtractName(const OpenFile& file)
{
    const QString words = AppModel::tr("pages %1");
    const QString around = file.name + inBrackets(words.arg(QString()));
    const qsizetype room = longestSuggestedName() - around.toUtf8().size();
    const QString list = cutTo(PageRanges::describe(file.selectedPositions()), std::max(room, leastForAList));
    return suggestedName(file.name, words.arg(list));
}

} // namespace folvane
