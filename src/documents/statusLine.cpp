#include "documents/statusLine.h"

#include "documents/OpenFile.h"

#include <QCoreApplication>

namespace folvane {

namespace {

QString tr(const char* text)
{
    return QCoreApplication::translate("folvane::statusLine", text);
}

} // namespace

QString statusLine(const OpenFile& file)
{
    QStringList pieces{tr("%1 pages").arg(file.pages.value().size())};
    if (const auto selected = file.selection.value().size(); selected > 0)
        pieces += tr("%1 selected").arg(selected);
    if (file.password)
        pieces += tr("password");
    if (file.isEdited)
        pieces += tr("not saved");
    return pieces.join(QStringLiteral(" · "));
}

} // namespace folvane
