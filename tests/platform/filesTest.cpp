// Writing files and holding sources open.

#include "platform/desktop/Preferences.h"
#include "platform/files/SourceFile.h"
#include "platform/files/writeFile.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <fcntl.h>
#include <functional>
#include <optional>

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace folvane {

namespace {

constexpr uid_t nobody = 65534;

class InFolder : public testing::Test {
protected:
    QUrl url(const QString& name) const { return QUrl::fromLocalFile(m_folder.filePath(name)); }
    QString path(const QString& name) const { return m_folder.filePath(name); }
    void put(const QString& name, const QByteArray& bytes) const
    {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }
    QByteArray get(const QString& name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
    }

    QTemporaryDir m_folder;
};
class Writing : public InFolder {};
class Sources : public InFolder {};

std::optional<QString> failure(const QUrl& target, const QByteArray& bytes)
{
    try {
        writeFile(target, bytes);
        return std::nullopt;
    } catch (const WriteError& error) {
        EXPECT_EQ(error.text(), QString::fromUtf8(error.what()));
        return error.text();
    }
}

/// True when the check succeeded.
bool inAnotherProcess(const std::function<bool()>& check)
{
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(check() ? 0 : 1);
    int status = -1;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

/// The same as an ordinary user, whom permissions hold back.
bool asOrdinaryUser(const std::function<bool()>& check)
{
    return inAnotherProcess([&check] {
        const bool ordinary = ::geteuid() != 0 || (::setgid(nobody) == 0 && ::setuid(nobody) == 0);
        return ordinary && check();
    });
}

} // namespace

TEST_F(Writing, ReplacesInPlace)
{
    put("a.pdf", QByteArray(5000, 'x'));
    ::link(qPrintable(path("a.pdf")), qPrintable(path("other name.pdf")));
    writeFile(url("a.pdf"), "new");
    EXPECT_EQ(get("a.pdf"), "new");
    EXPECT_EQ(get("other name.pdf"), "new"); // the same file, not another in its place
}

TEST_F(Writing, MakesOddNames)
{
    writeFile(url("Ünïcode #1 100%.pdf"), "x");
    EXPECT_EQ(get("Ünïcode #1 100%.pdf"), "x");
}

TEST_F(Writing, AFullDiskIsToldInTheSystemsWords)
{
    EXPECT_EQ(failure(QUrl::fromLocalFile("/dev/full"), "a few bytes"), QString("No space left on device"));
    EXPECT_EQ(failure(QUrl::fromLocalFile("/dev/full"), QByteArray(1 << 20, 'x')),
              QString("No space left on device"));
}

// A limit on the size of files stands in for a full disk, which needs one that can be filled.
TEST_F(Writing, WithoutRoomAnOldFileStaysAndANewOneIsGone)
{
    put("old.pdf", "old content");
    const auto fails = [this](const char* name) {
        const rlimit small{1000, 1000};
        return ::setrlimit(RLIMIT_FSIZE, &small) == 0
               && failure(url(name), QByteArray(5000, 'x')) == QString("File too large");
    };
    EXPECT_TRUE(inAnotherProcess([&] { return fails("old.pdf") && fails("new.pdf"); }));
    EXPECT_EQ(get("old.pdf"), "old content");
    EXPECT_FALSE(QFile::exists(path("new.pdf")));
    writeFile(url("old.pdf"), "short");
    EXPECT_EQ(get("old.pdf"), "short");
}

TEST_F(Writing, OfANewFileTouchesNothingThatHasItsName)
{
    put("a.pdf", "kept");
    QFile::link("/nowhere/at/all", path("link.pdf"));
    EXPECT_FALSE(writeNewFile(url("a.pdf"), "x"));
    EXPECT_FALSE(writeNewFile(url("link.pdf"), "x"));
    EXPECT_TRUE(writeNewFile(url("b.pdf"), "x"));
    EXPECT_EQ(get("a.pdf") + get("b.pdf"), "keptx");
}

TEST_F(Writing, OtherFailuresToo)
{
    EXPECT_EQ(failure(url("none/a.pdf"), "x"), QString("No such file or directory"));
    EXPECT_EQ(failure(QUrl::fromLocalFile(m_folder.path()), "x"), QString("Is a directory"));
    EXPECT_TRUE(failure(QUrl("https://merrowlight.example/a.pdf"), "x"));
    ASSERT_EQ(::mkfifo(qPrintable(path("pipe")), 0666), 0);
    EXPECT_TRUE(failure(url("pipe"), "x")); // and does not wait for a reader
}

TEST_F(Writing, AReadOnlyFolderOrFileStaysAsItWas)
{
    put("kept.pdf", "kept");
    ASSERT_EQ(::chmod(qPrintable(path("kept.pdf")), 0444), 0);
    ASSERT_EQ(::chmod(qPrintable(m_folder.path()), 0555), 0);
    const auto refused = [this](const char* name) {
        return asOrdinaryUser(
            [this, name] { return failure(url(name), "x") == QString("Permission denied"); });
    };
    EXPECT_TRUE(refused("new.pdf"));
    EXPECT_TRUE(refused("kept.pdf"));
    EXPECT_EQ(get("kept.pdf"), "kept");
    EXPECT_FALSE(QFile::exists(path("new.pdf")));
    ASSERT_EQ(::chmod(qPrintable(m_folder.path()), 0755), 0);
}

TEST_F(Sources, GoOnAfterReplacementAndDeletion)
{
    put("a", "old content");
    const auto source = SourceFile::open(url("a"));
    ASSERT_TRUE(source);
    put("b", "new");
    ASSERT_EQ(::rename(qPrintable(path("b")), qPrintable(path("a"))), 0);
    EXPECT_EQ(source->readAll(100), "old content");
    QFile::remove(path("a"));
    EXPECT_EQ(source->readAll(100), "old content");
    EXPECT_TRUE(source->unchanged());
}

TEST_F(Sources, SeeThatTheyWereCutOrRewritten)
{
    put("a", "0123456789");
    const auto cut = SourceFile::open(url("a"));
    ASSERT_EQ(::truncate(qPrintable(path("a")), 4), 0);
    EXPECT_FALSE(cut->unchanged());
    char room[10];
    EXPECT_EQ(cut->read(0, room, 4), 4);
    EXPECT_EQ(cut->failedReads(), 0U);
    EXPECT_EQ(cut->read(2, room, 8), -1);
    EXPECT_EQ(cut->failedReads(), 1U);
    EXPECT_EQ(cut->readAll(100), QByteArray());

    const auto rewritten = SourceFile::open(url("a"));
    const timespec times[2] = {{1, 0}, {1, 1}}; // by a nanosecond, the size being equal
    ASSERT_EQ(::utimensat(AT_FDCWD, qPrintable(path("a")), times, 0), 0);
    EXPECT_FALSE(rewritten->unchanged());
}

TEST_F(Sources, ReadWithinBounds)
{
    put("a", "0123456789");
    const auto source = SourceFile::open(url("a"));
    char room[10];
    EXPECT_EQ(source->read(8, room, 10), 2);
    EXPECT_EQ(source->read(10, room, 1), 0);
    EXPECT_EQ(source->read(1000, room, 1), 0);
    EXPECT_EQ(source->read(-1, room, 1), -1);
    EXPECT_EQ(source->read(std::numeric_limits<qint64>::max(), room, 1), 0);
    EXPECT_EQ(source->readAll(10), "0123456789");
    EXPECT_EQ(source->readAll(9), QByteArray());
}

TEST_F(Sources, AreRegularFilesOnly)
{
    ASSERT_EQ(::mkfifo(qPrintable(path("pipe")), 0666), 0);
    EXPECT_FALSE(SourceFile::open(url("pipe"))); // and does not wait for a writer
    EXPECT_FALSE(SourceFile::open(QUrl::fromLocalFile(m_folder.path())));
    EXPECT_FALSE(SourceFile::open(QUrl::fromLocalFile("/dev/zero")));
    EXPECT_FALSE(SourceFile::open(url("none")));
    EXPECT_FALSE(SourceFile::open(QUrl("https://merrowlight.example/a.pdf")));
    EXPECT_FALSE(SourceFile::open(QUrl()));
}

TEST_F(Sources, AreKnownThroughLinks)
{
    put("a", "x");
    put("b", "x");
    QFile::link(path("a"), path("soft"));
    ::link(qPrintable(path("a")), qPrintable(path("hard")));
    const FileIdentity identity = SourceFile::open(url("a"))->identity();
    EXPECT_EQ(SourceFile::identityOf(url("soft")), identity);
    EXPECT_EQ(SourceFile::identityOf(url("hard")), identity);
    EXPECT_NE(SourceFile::identityOf(url("b")), identity);
    EXPECT_EQ(SourceFile::identityOf(url("none")), std::nullopt);
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
    EXPECT_EQ(after.rlim_max, before.rlim_max);
}

TEST_F(InFolder, PreferencesLastInTheFile)
{
    SettingsPreferences(path("p.ini")).setValue("export.dpi", 150);
    SettingsPreferences again(path("p.ini"));
    EXPECT_EQ(again.value("export.dpi", 72).toInt(), 150);
    EXPECT_EQ(again.value("export.jpeg", true).toBool(), true);
    again.setValue("export.dpi", {});
    EXPECT_EQ(again.value("export.dpi", 72).toInt(), 72);
}

} // namespace folvane
