#include "documents/statusLine.h"

#include "documents/OpenFile.h"

#include <QCoreApplication>

namespace folvane {

namespace {

struct StatusLine {
    Q_DECLARE_TR_FUNCTIONS(folvane::statusLine)
};

} // namespace

QString statusLine(const OpenFile& file)
{
    QStringList pieces{StatusLine::tr("%1 pages").arg(file.pages.value().size())};
    if (const auto selected = file.selection.value().size(); selected > 0)
        pieces += StatusLine::tr("%1 selected").arg(selected);
    if (file.password)
        pieces += StatusLine::tr("password");
    if (file.isEdited)
        pieces += StatusLine::tr("not saved");
    return pieces.join(QStringLiteral(" · "));
}

} // namespace folvane
