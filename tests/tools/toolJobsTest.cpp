#include "documents/ModelTest.h"

#include "tools/exportImages/exporting.h"
#include "tools/split/splitting.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QRandomGenerator>

#include <csignal>

#include <sys/resource.h>

namespace folvane {

namespace {

/// While it lives, no file grows beyond this: what a full disk does, at a place of our choice.
class SmallDisk {
public:
    explicit SmallDisk(rlim_t bytes)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit small{bytes, m_before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &small);
    }
    ~SmallDisk() { ::setrlimit(RLIMIT_FSIZE, &m_before); }
    Q_DISABLE_COPY_MOVE(SmallDisk)

private:
    rlimit m_before{};
};

class ToolJobs : public ModelTest {
protected:
    ToolJobs() { QDir(m_folder.path()).mkdir("out"); }

    QStringList written() const { return QDir(path("out")).entryList(QDir::Files, QDir::Name); }
    /// A small page, then one that no compression makes small.
    OpenFilePtr openGrowing()
    {
        QImage noise(300, 300, QImage::Format_RGB32);
        QRandomGenerator random(1);
        for (int y = 0; y < noise.height(); ++y)
            random.generate(noise.scanLine(y), noise.scanLine(y) + noise.bytesPerLine());
        noise.save(path("noise.png"));
        const OpenFilePtr file = open({putPdf("a.pdf", 1)});
        await(model->insertPages(file, {url("noise.png")}));
        file->selection = QSet<QUuid>();
        return file;
    }
};

const SplitChoice everyPage{SplitChoice::Mode::Each, {}, 2};
constexpr rlim_t roomForOne = 60'000;

TEST_F(ToolJobs, AFullDiskLeavesTheWrittenPieces)
{
    const OpenFilePtr file = openGrowing();
    const SmallDisk disk(roomForOne);
    panels.folderAnswers << url("out");
    await(split(*model, *file, everyPage));
    runUntilIdle();
    EXPECT_EQ(error(), "File too large");
    EXPECT_FALSE(model->toast.value());
    EXPECT_EQ(textsIn(path("out/a 1.pdf")), "a-1");
    EXPECT_EQ(complaintsAbout(path("out/a 1.pdf")), "");
}

TEST_F(ToolJobs, AFullDiskLeavesTheWrittenPictures)
{
    const OpenFilePtr file = openGrowing();
    const SmallDisk disk(roomForOne);
    panels.folderAnswers << url("out");
    await(exportImages(*model, *file, {.dpi = 100}));
    runUntilIdle();
    EXPECT_EQ(error(), "File too large");
    EXPECT_EQ(QImage(path("out/a page 1.png")).size(), QSize(833, 1111));
}

TEST_F(ToolJobs, ACancelWhileExportingWritesNothingMore)
{
    const OpenFilePtr file = open({putPdf("a.pdf", 3)});
    panels.folderAnswers << url("out");
    const auto stopAfterTheFirst = [this] { model->busy.value()->task.request_stop(); };
    QObject::connect(model.get(), &AppModel::fileWritten, model.get(), stopAfterTheFirst);
    await(exportImages(*model, *file, {.jpeg = true, .dpi = 100}));
    EXPECT_EQ(model->busy.value()->title, "Exporting…");
    runUntilIdle();
    EXPECT_EQ(written(), QStringList("a page 1.jpg"));
    EXPECT_FALSE(model->toast.value() || model->errorMessage.value());
}

TEST_F(ToolJobs, SplittingHoldsItsSourcesUntilItsEnd)
{
    answerPasswords({{"a.pdf", {"pw"}}});
    const OpenFilePtr file = open({putLockedPdf("a.pdf", 3, "pw")});
    panels.folderAnswers << url("out");
    await(split(*model, *file, everyPage));
    model->close(file);
    EXPECT_TRUE(model->isInUse(url("a.pdf")));
    runUntilIdle();
    EXPECT_EQ(written().size(), 3);
    drainEngine();
    EXPECT_FALSE(model->isInUse(url("a.pdf")));
    EXPECT_FALSE(isHeld(url("a.pdf")));
}

TEST(ExportSettings, TakeNoOtherResolutionThanTheirs)
{
    MemoryPreferences preferences;
    EXPECT_EQ(ExportSettings::read(preferences), (ExportSettings{false, 200}));
    preferences.setValue("export.dpi", "300"); // as a settings file gives it
    preferences.setValue("export.jpeg", "true");
    EXPECT_EQ(ExportSettings::read(preferences), (ExportSettings{true, 300}));
    preferences.setValue("export.dpi", 100'000);
    EXPECT_EQ(ExportSettings::read(preferences).dpi, 200);
}

} // namespace

} // namespace folvane
