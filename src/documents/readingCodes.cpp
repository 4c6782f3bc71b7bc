#include "codes/reading/foundCodes.h"
#include "documents/AppModel.h"
#include "engine/PDFEngine.h"
#include "pictures/pictures.h"
#include "pictures/upright.h"
#include "platform/desktop/offers.h"
#include "platform/files/fileKind.h"
#include "platform/tasks/background.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <algorithm>

namespace folvane {

namespace {

const QMimeData& clipboard()
{
    static const QMimeData nothing;
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    return data ? *data : nothing;
}

QImage decoded(const QByteArray& bytes)
{
    const std::optional<Picture> picture = decodePicture({bytes}, {});
    return picture ? upright(picture->image, picture->orientation) : QImage();
}

/// Null when there is none.
QCoro::Task<QImage> pictureOnClipboard()
{
    const QByteArray bytes = offeredPicture(clipboard());
    if (bytes.isEmpty())
        co_return clipboard().imageData().value<QImage>();
    auto decode = [bytes] { return decoded(bytes); };
    QCoro::Task<QImage> decoding = inBackground(std::move(decode));
    co_return co_await decoding;
}

QString noCodesIn(const QString& name)
{
    return AppModel::tr("No codes found in “%1”.").arg(name);
}

bool canHoldCodes(const QUrl& file)
{
    return fileKind(file) != FileKind::Other;
}

} // namespace

QCoro::Task<> AppModel::readCodes(QList<QUrl> urls)
{
    return runReading([this, urls](std::stop_token stop) { return readFiles(urls, stop); });
}

// Copied files are read as files, which tells the user where each code is from.
QCoro::Task<> AppModel::readCodesFromClipboard()
{
    const QList<QUrl> copied = offeredFiles(clipboard());
    if (std::ranges::any_of(copied, canHoldCodes)) {
        co_await readCodes(copied);
        co_return;
    }
    const std::stop_token ended = m_end.get_token();
    const std::stop_source before = codes.task;
    const QImage picture = co_await pictureOnClipboard();
    if (ended.stop_requested() || before != codes.task) // a newer read began while this was decoded
        co_return;
    const Job reading = [this, picture](std::stop_token stop) { return readPicture(picture, stop); };
    if (picture.isNull())
        errorMessage = tr("There's no picture on the clipboard. Copy a screenshot or an image first.");
    else
        co_await runReading(reading);
}

QCoro::Task<> AppModel::runReading(Job reading)
{
    const std::stop_token ended = m_end.get_token();
    const std::stop_source task = codes.begin();
    const QString otherwise = tr("This couldn't be finished. Try again.");
    const std::optional<QString> failure = co_await failureOf(reading, task.get_token(), otherwise);
    if (ended.stop_requested())
        co_return;
    if (failure)
        errorMessage = failure;
    codes.end(task);
}

QCoro::Task<> AppModel::readFiles(QList<QUrl> urls, std::stop_token stop)
{
    const Sources::Hold hold = m_sources->hold({urls.begin(), urls.end()});
    QList<FoundCode> found;
    for (const QUrl& url : urls) {
        const std::vector<PageItem> pages = co_await load(url, BadPictures::LeaveOut);
        throwIfStopped(stop);
        if (pages.empty())
            continue;
        QCoro::Task<QList<FoundCode>> reading =
            engine().codes(url, int(pages.size()), lastPathComponent(url), stop);
        const QList<FoundCode> onPages = co_await reading;
        throwIfStopped(stop);
        found += onPages;
    }
    finishReading(found,
                  urls.size() == 1 ? noCodesIn(lastPathComponent(urls.front())) : tr("No codes found."));
}

QCoro::Task<> AppModel::readPicture(QImage picture, std::stop_token stop)
{
    QCoro::Task<std::vector<ReadCode>> reading = engine().codes(picture, stop);
    const std::vector<ReadCode> read = co_await reading;
    throwIfStopped(stop);
    const QString origin = tr("Pasted image");
    finishReading(foundCodes(read, origin), noCodesIn(origin));
}

void AppModel::finishReading(const QList<FoundCode>& found, const QString& emptyMessage)
{
    if (found.isEmpty()) {
        codes.emptyMessage = emptyMessage;
        return;
    }
    codes.found = found + codes.found.value();
    offerSupportOnce();
}

} // namespace folvane
