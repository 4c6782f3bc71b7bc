#include "platform/files/replaceDurably.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <fcntl.h>
#include <unistd.h>

namespace folvane {

namespace {

/// A new name lasts once its folder is on the disk. Some file systems cannot do that, and need not.
void flushFolder(const QString& path)
{
    const int folder = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0)
        return;
    ::fsync(folder);
    ::close(folder);
}

} // namespace

bool replaceDurably(const QString& path, const QByteArray& bytes)
{
    QSaveFile file(path); // flushes before it renames
    const bool isReplaced =
        file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
    if (isReplaced)
        flushFolder(QFileInfo(path).path());
    return isReplaced;
}

} // namespace folvane
