#include "stamps/StampMaker.h"

#include "pictures/samplesOf.h"
#include "platform/files/SourceFile.h"
#include "stamps/cutOut.h"
#include "stamps/liftInk.h"
#include "stamps/paperBehind.h"
#include "stamps/stampPicture.h"
#include "stamps/stampPng.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace folvane {

namespace {

using Stamp = StampMaker::Stamp;
using StampError = StampMaker::StampError;

constexpr int longestSource = 2000; // pixels
constexpr int longestStamp = 1200;
constexpr qint64 largestFile = qint64(512) << 20; // bytes

Stamp stampOf(const ImageSamples& pixels)
{
    const std::optional<QRect> box = inkBox(pixels);
    if (!box)
        throw StampError(StampError::Kind::NoInk);
    ImageSamples ink = cutOut(pixels, *box, longestStamp);
    const QSize size = ink.size;
    const QByteArray png = pngOf(imageOf(std::move(ink)));
    if (png.isEmpty())
        throw StampError(StampError::Kind::Unreadable);
    return {png, size.width(), size.height()};
}

Stamp stampFrom(PictureBytes content, const QString& extension, const std::stop_token& stop)
{
    std::optional<ImageSamples> pixels = stampPicture(std::move(content), extension, longestSource, stop);
    throwIfStopped(stop);
    if (!pixels)
        throw StampError(StampError::Kind::Unreadable);
    if (!hasTransparency(*pixels)) {
        ImageSamples paper = paperBehind(*pixels, stop);
        pixels = liftInk(std::move(*pixels), std::move(paper), stop);
    }
    return stampOf(*pixels);
}

/// Whatever else goes wrong with strange pictures, such as memory running out, has no words of its own.
template <std::invocable F> Stamp withWords(F make)
{
    try {
        return make();
    } catch (const std::exception& error) {
        if (dynamic_cast<const Cancelled*>(&error) || dynamic_cast<const StampError*>(&error))
            throw;
        throw StampError(StampError::Kind::Unreadable);
    }
}

Stamp stampFromFile(const QUrl& url, const std::stop_token& stop)
{
    const std::shared_ptr<SourceFile> file = SourceFile::tryToOpen(url).file;
    if (!file)
        throw StampError(StampError::Kind::Unreadable);
    return stampFrom({file->readAll(largestFile), file}, QFileInfo(url.fileName()).suffix(), stop);
}

} // namespace

QString StampError::errorDescription() const
{
    return m_kind == Kind::NoInk
               ? QCoreApplication::translate("folvane::StampMaker",
                                             "No signature or stamp found. Try a photo of it on white paper.")
               : QCoreApplication::translate("folvane::StampMaker", "This image can't be read.");
}

StampMaker& StampMaker::shared()
{
    static StampMaker maker;
    return maker;
}

QCoro::Task<Stamp> StampMaker::makeStamp(QUrl file, std::stop_token stop)
{
    auto job = [file, stop] { return withWords([&] { return stampFromFile(file, stop); }); };
    return m_worker.run(std::move(job), stop, JobQueue::WhenStopped::Leave);
}

QCoro::Task<Stamp> StampMaker::makeStamp(QByteArray bytes, std::stop_token stop)
{
    auto job = [bytes, stop] { return withWords([&] { return stampFrom({bytes}, {}, stop); }); };
    return m_worker.run(std::move(job), stop, JobQueue::WhenStopped::Leave);
}

} // namespace folvane
