#include "stamps/StampLibrary.h"

#include "pictures/ImageSamples.h"
#include "platform/files/SourceFile.h"
#include "platform/files/replaceDurably.h"
#include "stamps/stampIndex.h"
#include "stamps/storedPicture.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QSet>
#include <QStandardPaths>

#include <algorithm>

namespace folvane {

namespace {

constexpr qint64 largestIndex = qint64(4) << 20; // bytes
constexpr qint64 mostPixels = qint64(1) << 26;   // of all pictures: strange ones must not fill the memory

double secondsSince2001()
{
    static const QDateTime start(QDate(2001, 1, 1), QTime(0, 0), Qt::UTC);
    return double(start.msecsTo(QDateTime::currentDateTimeUtc())) / 1000;
}

QList<StampRecord>::const_iterator find(const QList<StampRecord>& stamps, const QUuid& id)
{
    return std::ranges::find(stamps, id, &StampRecord::id);
}

} // namespace

StampLibrary::StampLibrary(QString folder) : m_folder(std::move(folder))
{
    load();
}

QString StampLibrary::usersFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)
           + QStringLiteral("/Folvane/Stamps");
}

void StampLibrary::load()
{
    const auto index =
        SourceFile::tryToOpen(QUrl::fromLocalFile(m_folder + QStringLiteral("/stamps.json"))).file;
    std::optional<QList<StampRecord>> records =
        index ? recordsOfIndex(index->readAll(largestIndex)) : std::nullopt;
    if (!records)
        return;
    erase_if(*records, [this](const StampRecord& record) { return !QFile::exists(pathOf(record.id)); });
    QHash<QUuid, QImage> pictures;
    qint64 free = mostPixels;
    for (const StampRecord& record : *records)
        if (const QImage picture = storedPicture(pathOf(record.id), free); !picture.isNull()) {
            free -= pixelCount(picture.size());
            pictures.insert(record.id, picture);
        }
    stamps = *records;
    images = pictures;
}

bool StampLibrary::write(const QList<StampRecord>& records) const
{
    return QDir().mkpath(m_folder)
           && replaceDurably(m_folder + QStringLiteral("/stamps.json"), stampIndex(records));
}

// The picture first: whenever this ends, no record is without one.
bool StampLibrary::store(const StampMaker::Stamp& stamp, const StampRecord& record) const
{
    QList<StampRecord> longer = stamps;
    longer.append(record);
    return QDir().mkpath(m_folder) && replaceDurably(pathOf(record.id), stamp.png) && write(longer);
}

std::optional<StampRecord> StampLibrary::add(const StampMaker::Stamp& stamp, const QString& name,
                                             const QUuid& id)
{
    if (std::optional<StampRecord> known = record(id))
        return known;
    const QString trimmed = name.trimmed();
    const StampRecord added{id, trimmed.isEmpty() ? suggestedName(stamp) : trimmed, secondsSince2001(),
                            stamp.pixelWidth, stamp.pixelHeight};
    if (!store(stamp, added)) {
        QFile::remove(pathOf(id));
        errorMessage = tr("The signature or stamp couldn't be saved. Try again.");
        return std::nullopt;
    }
    if (const QImage picture = storedPicture(stamp.png); !picture.isNull()) {
        QHash<QUuid, QImage> pictures = images;
        pictures.insert(id, picture);
        images = pictures;
    }
    stamps = stamps.value() + QList{added};
    return added;
}

void StampLibrary::rename(QUuid id, const QString& newName)
{
    const QString trimmed = newName.trimmed();
    QList<StampRecord> records = stamps;
    const auto renamed = std::ranges::find(records, id, &StampRecord::id);
    if (trimmed.isEmpty() || renamed == records.end())
        return;
    renamed->name = trimmed;
    change(records);
}

// The index first: at worst a picture stays that nobody lists.
void StampLibrary::remove(QUuid id)
{
    QList<StampRecord> records = stamps;
    erase_if(records, [&id](const StampRecord& record) { return record.id == id; });
    if (!change(records))
        return;
    QFile::remove(pathOf(id));
    QHash<QUuid, QImage> pictures = images;
    pictures.remove(id);
    images = pictures;
}

bool StampLibrary::change(const QList<StampRecord>& records)
{
    if (!write(records)) {
        errorMessage = tr("The change couldn't be saved. Try again.");
        return false;
    }
    stamps = records;
    return true;
}

std::optional<StampRecord> StampLibrary::record(const QUuid& id) const
{
    const QList<StampRecord>& all = stamps.value();
    const auto found = find(all, id);
    return found == all.end() ? std::nullopt : std::optional(*found);
}

QHash<QUuid, QUrl> StampLibrary::files() const
{
    QHash<QUuid, QUrl> files;
    for (const StampRecord& record : stamps.value())
        files.insert(record.id, QUrl::fromLocalFile(pathOf(record.id)));
    return files;
}

QString StampLibrary::suggestedName(const StampMaker::Stamp& stamp) const
{
    const QString base = isSignature(stamp.pixelWidth, stamp.pixelHeight) ? tr("Signature") : tr("Stamp");
    QSet<QString> taken;
    for (const StampRecord& record : stamps.value())
        taken.insert(record.name);
    QString name = base;
    for (int n = 2; taken.contains(name); ++n)
        name = base + u' ' + QString::number(n);
    return name;
}

QString StampLibrary::pathOf(const QUuid& id) const
{
    return m_folder + u'/' + id.toString(QUuid::WithoutBraces).toUpper() + QStringLiteral(".png");
}

} // namespace folvane
