#include "stamps/StampLibrary.h"
#include "stamps/stampIndex.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace folvane {
namespace {

using testing::ElementsAre;

class StampLibraries : public testing::Test {
protected:
    StampLibraries() { png.fill(Qt::transparent); }

    QString path(const QString& name) const { return folder + u'/' + name; }
    void put(const QString& name, const QByteArray& bytes) const
    {
        QFile file(path(name));
        ASSERT_TRUE(QDir().mkpath(folder) && file.open(QIODevice::WriteOnly) && file.write(bytes) >= 0);
    }
    QByteArray index() const
    {
        QFile file(path("stamps.json"));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    StampMaker::Stamp stamp(int width = 160, int height = 100) const
    {
        QByteArray bytes;
        QBuffer buffer(&bytes);
        png.save(&buffer, "PNG");
        return {bytes, width, height};
    }
    static QStringList names(const StampLibrary& library)
    {
        QStringList names;
        for (const StampRecord& record : library.stamps.value())
            names << record.name;
        return names;
    }

    QTemporaryDir top;
    QString folder = top.filePath("Folvane/Stamps");
    QImage png{4, 3, QImage::Format_ARGB32};
};

TEST_F(StampLibraries, KeepStampsFromStartToStart)
{
    const QUuid id("0a1b2c3d-0000-5000-8000-00000000000f");
    StampLibrary library(folder);
    ASSERT_TRUE(library.add(stamp(), "  In/out ", id));
    EXPECT_EQ(library.add(stamp(9, 9), "Other", id), library.record(id)) << "the first one stays";
    ASSERT_TRUE(library.add(stamp(), " "));
    library.rename(id, " Me ");
    library.rename(id, "  ");
    EXPECT_EQ(names(library), QStringList({"Me", "Signature"}));
    EXPECT_TRUE(index().startsWith("[{") && !index().contains("Other"));

    const StampLibrary next(folder);
    EXPECT_EQ(next.stamps.value(), library.stamps.value());
    EXPECT_EQ(next.images.value().value(id).size(), png.size());
    EXPECT_TRUE(QFile::exists(next.files()[id].toLocalFile()));
    EXPECT_TRUE(next.files()[id].path().endsWith("/0A1B2C3D-0000-5000-8000-00000000000F.png"));
    library.remove(id);
    EXPECT_FALSE(QFile::exists(path("0A1B2C3D-0000-5000-8000-00000000000F.png")));
    EXPECT_EQ(names(StampLibrary(folder)), QStringList("Signature"));
}

TEST_F(StampLibraries, SuggestNamesByShape)
{
    StampLibrary library(folder);
    QStringList suggested;
    for (const auto& [width, height] : {std::pair(160, 100), {800, 200}, {159, 100}, {2, 0}, {1, 0}}) {
        suggested << library.suggestedName(stamp(width, height));
        library.add(stamp(width, height), {});
    }
    EXPECT_EQ(suggested, QStringList({"Signature", "Signature 2", "Stamp", "Signature 3", "Stamp 2"}));
}

TEST_F(StampLibraries, LeaveAllAsItWasWhenTheDiskSaysNo)
{
    StampLibrary library(folder);
    const StampRecord kept = *library.add(stamp(), "Kept");
    const QByteArray before = index();
    const QStringList files = QDir(folder).entryList(QDir::Files);
    ASSERT_TRUE(QFile::remove(path("stamps.json")) && QDir().mkpath(path("stamps.json/in the way")));
    EXPECT_FALSE(library.add(stamp(), "New"));
    EXPECT_EQ(library.errorMessage.value(), "The signature or stamp couldn't be saved. Try again.");
    EXPECT_EQ(QDir(folder).entryList({"*.png"}, QDir::Files).size(), 1);
    library.rename(kept.id, "Renamed");
    library.remove(kept.id);
    EXPECT_EQ(library.errorMessage.value(), "The change couldn't be saved. Try again.");
    EXPECT_THAT(library.stamps.value(), ElementsAre(kept));
    EXPECT_TRUE(library.images.value().contains(kept.id));
    ASSERT_TRUE(QDir(path("stamps.json")).removeRecursively());
    put("stamps.json", before);
    EXPECT_EQ(QDir(folder).entryList(QDir::Files), files);
    StampLibrary nowhere("/proc/none/Stamps");
    EXPECT_FALSE(nowhere.add(stamp(), "New"));
}

TEST_F(StampLibraries, OutliveStrangeFolders)
{
    const QByteArray one = stampIndex({{QUuid::createUuid(), "a", 0.25, 4, 3}});
    const auto with = [&one](const char* from, const char* to) { return QByteArray(one).replace(from, to); };
    for (const QByteArray& strange :
         {QByteArray(), QByteArray("[{}]"), QByteArray("{}"), with("\"pixelWidth\":4", "\"pixelWidth\":4.5"),
          with("\"id\":\"", "\"id\":\"../"), with("0.25", "\"0.25\""), with("\"name\":\"a\",", ""),
          one.chopped(1) + ",7]", one.chopped(1) + QByteArray(5 << 20, ' ') + "]"}) {
        put("stamps.json", strange);
        EXPECT_TRUE(StampLibrary(folder).stamps.value().isEmpty()) << strange.left(200).constData();
        EXPECT_EQ(index(), strange);
    }
    EXPECT_TRUE(recordsOfIndex(with("{", "{\"new\":[1],")));
    EXPECT_EQ(recordsOfIndex(stampIndex({{{}, "a/\"ü\n", 0.1, 1, 2}}))->first().name, "a/\"ü\n");
    EXPECT_TRUE(stampIndex({{{}, "a/b", 0, 1, 2}}).contains("a\\/b"));
}

TEST_F(StampLibraries, DropRecordsWithoutAFileAndKeepThoseWithABadOne)
{
    StampLibrary library(folder);
    const QUuid gone = library.add(stamp(), "Gone")->id, bad = library.add(stamp(), "Bad")->id;
    put(bad.toString(QUuid::WithoutBraces).toUpper() + ".png", "no picture");
    ASSERT_TRUE(QFile::remove(library.files()[gone].toLocalFile()));
    StampLibrary next(folder);
    EXPECT_EQ(names(next), QStringList("Bad"));
    EXPECT_TRUE(next.images.value().isEmpty());
    EXPECT_TRUE(index().contains("Gone")) << "until the next change";
    next.rename(bad, "Still bad");
    EXPECT_FALSE(index().contains("Gone"));
}

} // namespace
} // namespace folvane
