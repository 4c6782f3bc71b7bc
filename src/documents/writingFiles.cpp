#include "documents/AppModel.h"
#include "documents/fileNames.h"
#include "platform/files/writeFile.h"
#include "platform/tasks/Cancelled.h"
#include "platform/tasks/background.h"

namespace folvane {

QCoro::Task<> AppModel::writeFiles(QList<FileName> items, std::optional<QUrl> near, QString prompt,
                                   QString title, MakeFile make)
{
    const std::stop_token ended = m_end.get_token();
    const FolderPanel panel{folderOf(near), prompt};
    const std::optional<QUrl> folder = co_await m_services.panels.chooseFolder(panel);
    if (ended.stop_requested() || !folder)
        co_return;
    run(title, [this, items, folder, make](std::stop_token stop) {
        return makeAndWrite(items, *folder, make, stop);
    });
}

namespace {

/// Where it was written: at the first name that nothing has.
QUrl writeUnderFreeName(const QUrl& folder, const FileName& item, const QByteArray& data)
{
    for (int count = 1;; ++count) {
        const QUrl target = numberedFile(folder, item, count);
        if (writeNewFile(target, data))
            return target;
    }
}

} // namespace

// One at a time, so that memory holds the bytes of one file only.
QCoro::Task<> AppModel::makeAndWrite(QList<FileName> items, QUrl folder, MakeFile make, std::stop_token stop)
{
    const std::stop_token ended = m_end.get_token();
    QList<QUrl> written;
    for (int i = 0; const FileName& item : items) {
        throwIfStopped(stop);
        const QByteArray data = co_await make(i++, stop);
        const auto writing = [data, folder, item] { return writeUnderFreeName(folder, item, data); };
        const QUrl target = co_await inBackground(writing, stop);
        if (ended.stop_requested())
            co_return;
        written.append(target);
        emit fileWritten(target);
    }
    saved(written);
}

} // namespace folvane
