#include "platform/files/helperProgram.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace folvane {

QString helperProgram(const char* name)
{
    const QString beside = QCoreApplication::applicationDirPath();
    for (const char* folder : {"/", "/../libexec/folvane/"})
        if (const QString path = beside + QLatin1String(folder) + QLatin1String(name);
            QFileInfo(path).isExecutable())
            return path;
    return {};
}

} // namespace folvane
