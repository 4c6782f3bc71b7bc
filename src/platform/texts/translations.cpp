#include "platform/texts/translations.h"

#include <QCoreApplication>
#include <QTranslator>

namespace folvane {

void installTranslations()
{
    auto* english = new QTranslator(QCoreApplication::instance());
    if (english->load(QStringLiteral(":/translations/folvane_en.qm")))
        QCoreApplication::installTranslator(english);
}

} // namespace folvane
