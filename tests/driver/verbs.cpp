#include "verbs.h"

#include <QHash>

namespace folvane::driver {

Verb verbNamed(const QString& name)
{
    static const QHash<QString, Verb> verbs{
        {QStringLiteral("open"), openFiles},
        {QStringLiteral("state"), tellState},
        {QStringLiteral("select"), selectPages},
        {QStringLiteral("turn"), turnPages},
        {QStringLiteral("delete"), deletePages},
        {QStringLiteral("move"), movePages},
        {QStringLiteral("dropPages"), dropPages},
        {QStringLiteral("insert"), insertFiles},
        {QStringLiteral("saveAs"), saveAs},
        {QStringLiteral("extract"), extract},
        {QStringLiteral("measure"), measure},
        {QStringLiteral("compress"), compress},
        {QStringLiteral("mergeAdd"), addToMerge},
        {QStringLiteral("mergeMove"), moveInMerge},
        {QStringLiteral("mergeRemove"), removeFromMerge},
        {QStringLiteral("mergeClear"), clearMerge},
        {QStringLiteral("merge"), mergeFiles},
        {QStringLiteral("split"), splitFile},
        {QStringLiteral("password"), saveWithPassword},
        {QStringLiteral("exportImages"), exportPages},
        {QStringLiteral("closeRequest"), requestClose},
        {QStringLiteral("close"), closeFile},
        {QStringLiteral("quit"), quit},
        {QStringLiteral("image"), drawImage},
        {QStringLiteral("parse"), parseRanges},
        {QStringLiteral("describe"), describePages},
        {QStringLiteral("wait"), waitForJob},
        {QStringLiteral("cancel"), cancelJob},
        {QStringLiteral("rss"), tellMemory},
    };
    return verbs.value(name, nullptr);
}

} // namespace folvane::driver
