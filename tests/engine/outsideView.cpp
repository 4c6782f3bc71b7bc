#include "engine/outsideView.h"

#include "support/tools.h"

namespace folvane {

OutsideView::OutsideView(const QString& path)
{
    const QString said = QString::fromUtf8(runTool("mutool", {"run", FOLVANE_OUTSIDE_VIEW, path}).output);
    for (const QString& line : said.split(u'\n', Qt::SkipEmptyParts)) {
        QStringList& list = line.startsWith("link")       ? links
                            : line.startsWith("bookmark") ? bookmarks
                                                          : fields;
        list << line.section(u' ', 1);
    }
    fields.sort();
}

} // namespace folvane
