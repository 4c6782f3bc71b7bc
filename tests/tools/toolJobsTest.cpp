#include "documents/ModelTest.h"

#include "support/tools.h"
#include "tools/exportImages/exporting.h"
#include "tools/protect/protecting.h"
#include "tools/split/splitting.h"

#include <QDir>
#include <QFile>
#include <QImage>

namespace folvane {

namespace {

class ToolJobs : public ModelTest {
protected:
    ToolJobs()
    {
        QDir(m_folder.path()).mkdir("out");
        panels.folderAnswers << url("out");
    }

    QStringList written() const { return QDir(path("out")).entryList(QDir::Files, QDir::Name); }
    OpenFilePtr openLocked(int pages)
    {
        answerPasswords({{"a.pdf", {"old"}}});
        return open({putLockedPdf("a.pdf", pages, "old")});
    }
};

TEST_F(ToolJobs, SplittingTakesThePagesAsTheyStandAndHoldsTheirSourcesUntilItsEnd)
{
    const OpenFilePtr file = openLocked(5);
    model->move(file, at(*file, {5}), *at(*file, {1}).begin());
    model->deletePages(file, at(*file, {2}));
    await(split(*model, *file, {SplitChoice::Mode::Ranges, "3,3; 1-2"}));
    EXPECT_EQ(model->busy.value()->title, "Splitting…");
    EXPECT_EQ(std::get<FolderPanel>(panels.asked.value(0)).prompt, "Split Here");
    model->close(file);
    EXPECT_TRUE(model->isInUse(url("a.pdf")));
    runUntilIdle();
    EXPECT_EQ(written(), QStringList({"a 1-2.pdf", "a 3 2.pdf", "a 3.pdf"}));
    EXPECT_EQ(textsIn(path("out/a 1-2.pdf"), "old"), "a-5 a-2");
    EXPECT_EQ(textsIn(path("out/a 3 2.pdf"), "old"), "a-3");
    EXPECT_NE(faultsOf(path("out/a 3.pdf")), "") << "a piece of a locked file is locked";
    drainEngine();
    EXPECT_FALSE(model->isInUse(url("a.pdf")) || isHeld(url("a.pdf")));
}

TEST_F(ToolJobs, ExportingNamesPagesByTheirPresentPlaces)
{
    const OpenFilePtr file = open({putPdf("a.pdf", 6)});
    model->turn(file, at(*file, {5}), true);
    file->selection = at(*file, {5, 2});
    put("out/a page 5.jpg", "kept");
    await(exportImages(*model, *file, {.jpeg = true, .dpi = 100}));
    EXPECT_EQ(model->busy.value()->title, "Exporting…");
    EXPECT_EQ(std::get<FolderPanel>(panels.asked.value(0)).prompt, "Export Here");
    runUntilIdle();
    EXPECT_EQ(written(), QStringList({"a page 2.jpg", "a page 5 2.jpg", "a page 5.jpg"}));
    EXPECT_EQ(QImage(path("out/a page 2.jpg")).size(), QSize(833, 1111));
    EXPECT_EQ(QImage(path("out/a page 5 2.jpg")).size(), QSize(1111, 833));
    EXPECT_EQ(get("out/a page 5.jpg"), "kept");
}

TEST_F(ToolJobs, ProtectedCopiesHaveTheirPasswordOrNone)
{
    const OpenFilePtr file = openLocked(2);
    saveTo("plain.pdf", [&] { return saveProtectedCopy(*model, file, std::nullopt); });
    saveTo("new.pdf", [&] { return saveProtectedCopy(*model, file, "käse 日本"); });
    EXPECT_EQ(std::get<SavePanel>(panels.asked.value(0)).name, "a (no password).pdf");
    EXPECT_EQ(std::get<SavePanel>(panels.asked.value(1)).name, "a (protected).pdf");
    EXPECT_EQ(textsIn(path("plain.pdf")), "a-1 a-2");
    EXPECT_EQ(textsIn(path("new.pdf"), "käse 日本"), "a-1 a-2");
    EXPECT_NE(faultsOf(path("new.pdf"), {"--password=old"}), "");
    EXPECT_EQ(file->password, "old");
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
