// Writing files and holding sources open.

#include "platform/desktop/Preferences.h"
#include "platform/files/SourceFile.h"
#include "platform/files/writeFile.h"

#include "support/TestFolder.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace folvane {

namespace {

class InFolder : public testing::Test, public TestFolder {
protected:
    std::shared_ptr<SourceFile> source(const QString& name) const
    {
        return SourceFile::tryToOpen(url(name)).file;
    }
};
class Writing : public InFolder {};
class Sources : public InFolder {};

/// Empty when it could be written.
QString failure(const QUrl& target, const QByteArray& bytes)
{
    try {
        writeFile(target, bytes);
        return {};
    } catch (const WriteError& error) {
        EXPECT_EQ(error.text(), QString::fromUtf8(error.what()));
        return error.text();
    }
}

} // namespace

TEST_F(Writing, ReplacesInPlace)
{
    put("a.pdf", QByteArray(5000, 'x'));
    ::link(qPrintable(path("a.pdf")), qPrintable(path("other name.pdf")));
    writeFile(url("a.pdf"), "new");
    EXPECT_EQ(get("a.pdf"), "new");
    EXPECT_EQ(get("other name.pdf"), "new"); // the same file, not another in its place
    writeFile(url("Ünïcode #1 100%.pdf"), "x");
    EXPECT_EQ(get("Ünïcode #1 100%.pdf"), "x");
}

TEST_F(Writing, TellsFailuresInTheSystemsWords)
{
    ASSERT_EQ(::mkfifo(qPrintable(path("pipe")), 0666), 0);
    const QUrl fullDisk = QUrl::fromLocalFile("/dev/full"), elsewhere("https://merrowlight.example/a.pdf");
    EXPECT_EQ(failure(fullDisk, QByteArray(1 << 20, 'x')), "No space left on device");
    EXPECT_EQ(failure(url("none/a.pdf"), "x"), "No such file or directory");
    EXPECT_EQ(failure(url(), "x"), "Is a directory");
    EXPECT_EQ(failure(url("pipe"), "x"), "No such device or address"); // and waits for no reader
    EXPECT_FALSE(failure(elsewhere, "x").isEmpty());
}

// A limit on the size of files stands in for a full disk, which needs one that can be filled.
TEST_F(Writing, WithoutRoomAnOldFileStaysAndANewOneIsGone)
{
    put("old.pdf", "old content");
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
    const rlimit small{1000, before.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    for (const char* name : {"old.pdf", "new.pdf"})
        EXPECT_EQ(failure(url(name), QByteArray(5000, 'x')), "File too large");
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &before), 0);
    EXPECT_EQ(get("old.pdf") + get("new.pdf"), "old content(none)");
}

TEST_F(Sources, SeeThatTheyWereCutOrRewritten)
{
    put("a", "0123456789");
    const auto cut = source("a");
    ASSERT_EQ(::truncate(qPrintable(path("a")), 4), 0);
    EXPECT_FALSE(cut->unchanged());
    EXPECT_EQ(cut->readAll(100), QByteArray());
    EXPECT_EQ(cut->failedReads(), 1U);

    const timespec before[2] = {{1, 0}, {1, 0}}, after[2] = {{1, 0}, {1, 1}};
    ASSERT_EQ(::utimensat(AT_FDCWD, qPrintable(path("a")), before, 0), 0);
    const auto rewritten = source("a");
    EXPECT_EQ(rewritten->readAll(100), "0123");
    EXPECT_EQ(rewritten->failedReads(), 0U);
    ASSERT_EQ(::utimensat(AT_FDCWD, qPrintable(path("a")), after, 0), 0);
    EXPECT_FALSE(rewritten->unchanged()) << "by a nanosecond, the size being equal";
}

TEST_F(Sources, ReadWithinBounds)
{
    put("a", "0123456789");
    char room[10];
    const std::pair<qint64, int> rows[]{
        {8, 2}, {10, 0}, {1000, 0}, {-1, -1}, {std::numeric_limits<qint64>::max(), 0}};
    for (const auto& [offset, want] : rows)
        EXPECT_EQ(source("a")->read(offset, room, 10), want) << offset;
    EXPECT_EQ(source("a")->readAll(10), "0123456789");
    EXPECT_EQ(source("a")->readAll(9), QByteArray());
}

TEST_F(Sources, AreRegularFilesOnly)
{
    ASSERT_EQ(::mkfifo(qPrintable(path("pipe")), 0666), 0); // nobody waits for a writer
    for (const QUrl& odd : {url("pipe"), url("none"), url(), QUrl::fromLocalFile("/dev/zero"),
                            QUrl("https://merrowlight.example/a.pdf"), QUrl()})
        EXPECT_FALSE(SourceFile::tryToOpen(odd).file) << odd.toString().toStdString();
}

TEST(Descriptors, TheLimitIsRaised)
{
    rlimit before{}, after{};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
    const rlimit low{std::min<rlim_t>(256, before.rlim_max), before.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &low), 0);
    raiseDescriptorLimit();
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &after), 0);
    EXPECT_EQ(after.rlim_cur, std::min<rlim_t>(before.rlim_max, 65536));
}

TEST_F(InFolder, PreferencesLastInTheFile)
{
    SettingsPreferences(path("p.ini")).setValue("export.dpi", 150);
    SettingsPreferences again(path("p.ini"));
    EXPECT_EQ(again.value("export.dpi", 72).toInt(), 150);
    again.setValue("export.dpi", {});
    EXPECT_EQ(again.value("export.dpi", 72).toInt(), 72);
}

} // namespace folvane
