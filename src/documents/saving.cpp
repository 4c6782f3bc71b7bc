#include "documents/AppModel.h"
#include "documents/buildPlans.h"
#include "documents/pages/pageLists.h"
#include "documents/suggestedNames.h"
#include "engine/PDFEngine.h"
#include "platform/desktop/Preferences.h"
#include "platform/files/fileKind.h"
#include "platform/files/writeFile.h"
#include "platform/tasks/Cancelled.h"
#include "platform/tasks/background.h"

#include <QFileInfo>

namespace folvane {

namespace {

QUrl withName(QUrl url, const QString& name)
{
    return QUrl::fromLocalFile(QFileInfo(url.toLocalFile()).absolutePath() + u'/' + name);
}

bool exists(const QUrl& url)
{
    return QFileInfo::exists(url.toLocalFile());
}

} // namespace

// The panel has asked whether to replace what stands at the name that it gave back. Where the added ending
// leads to another file, that has still to be asked.
QCoro::Task<std::optional<QUrl>> AppModel::chooseSaveURL(QString name, std::optional<QUrl> near)
{
    Panels& panels = m_services.panels;
    SavePanel panel{withPdfEnding(name), folderOf(near)};
    for (;;) {
        const std::optional<QUrl> chosen = co_await panels.chooseSave(panel);
        if (!chosen || fileKind(*chosen) == FileKind::Pdf)
            co_return chosen;
        const QUrl completed = withName(*chosen, withPdfEnding(lastPathComponent(*chosen)));
        if (!exists(completed))
            co_return completed;
        const bool replace = co_await panels.confirmReplace(completed);
        if (replace)
            co_return completed;
        panel = SavePanel{lastPathComponent(completed), folderOf(completed)};
    }
}

bool AppModel::refuseInUse(const QUrl& url)
{
    if (!isInUse(url))
        return false;
    errorMessage = tr("“%1” is open in Folvane, so it can't be replaced. Save under another name.")
                       .arg(lastPathComponent(url));
    return true;
}

void AppModel::write(BuildPlan plan, QUrl url, QString title, Action onSaved)
{
    if (refuseInUse(url))
        return;
    run(title,
        [this, plan, url, onSaved](std::stop_token stop) { return buildAndWrite(plan, url, onSaved, stop); });
}

QCoro::Task<> AppModel::buildAndWrite(BuildPlan plan, QUrl url, Action onSaved, std::stop_token stop)
{
    const QByteArray data = co_await m_services.engine.build(plan, stop);
    throwIfStopped(stop);
    if (refuseInUse(url)) // opened while the copy was being made
        co_return;
    co_await writeOne(data, url, onSaved, stop);
}

QCoro::Task<> AppModel::writeOne(QByteArray data, QUrl url, Action onSaved, std::stop_token stop)
{
    const std::stop_token ended = m_end.get_token();
    const auto writing = [data, url] { writeFile(url, data); };
    co_await inBackground(writing, stop);
    if (ended.stop_requested())
        co_return;
    emit fileWritten(url);
    onSaved();
    saved({url});
}

QCoro::Task<> AppModel::save(QByteArray data, QString name, std::optional<QUrl> near)
{
    const std::stop_token ended = m_end.get_token();
    const std::optional<QUrl> url = co_await chooseSaveURL(name, near);
    if (ended.stop_requested() || !url || refuseInUse(*url))
        co_return;
    run(tr("Saving…"), [this, data, url](std::stop_token stop) { return writeOne(data, *url, [] {}, stop); });
}

QCoro::Task<> AppModel::saveAs(OpenFilePtr file)
{
    const std::stop_token ended = m_end.get_token();
    const std::optional<QUrl> url = co_await chooseSaveURL(suggestedName(*file), file->url);
    if (ended.stop_requested() || !url)
        co_return;
    const BuildPlan plan = buildPlan(stamps, file->pages, file->password);
    write(plan, *url, tr("Saving…"), [file] { file->isEdited = false; });
}

QCoro::Task<> AppModel::extract(OpenFilePtr file)
{
    const std::stop_token ended = m_end.get_token();
    const std::vector<PageItem> pages = duplicates(file->selectedPages());
    const std::optional<QUrl> url = co_await chooseSaveURL(suggestedExtractName(*file), file->url);
    if (!ended.stop_requested() && url)
        write(buildPlan(stamps, pages, file->password), *url, tr("Saving…"));
}

void AppModel::saved(QList<QUrl> urls)
{
    if (urls.isEmpty())
        return;
    const QString words = urls.size() == 1 ? tr("Saved “%1”").arg(lastPathComponent(urls.first()))
                                           : tr("Saved %1 files").arg(urls.size());
    showToast(words, urls.first());
    countSavedFiles(urls.size());
    offerSupportOnce();
    offerFriendIfDue();
}

} // namespace folvane
