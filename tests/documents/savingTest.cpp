#include "documents/ModelTest.h"

#include "platform/tasks/background.h"
#include "support/tools.h"

#include <QFile>

#include <filesystem>

namespace folvane {

namespace {

using namespace std::chrono_literals;

class Saving : public ModelTest {
protected:
    QString toast() const { return model->toast.value() ? model->toast.value()->text : QString(); }
};

QCoro::Task<> wait(Answer<bool> go, std::stop_token)
{
    co_await go;
    throw std::runtime_error("vector::_M_range_check");
}

} // namespace

TEST_F(Saving, WritesTheEditedPagesAndClearsTheMark)
{
    const OpenFilePtr file = open({putPdf("a.pdf", 4)});
    const QByteArray source = get("a.pdf");
    model->deletePages(file, at(*file, {2}));
    model->move(file, at(*file, {3}), *at(*file, {1}).begin());
    saveAs(file, "out.pdf");
    EXPECT_EQ(textsIn(path("out.pdf")), "a-4 a-1 a-3");
    EXPECT_EQ(faultsOf(path("out.pdf")), "");
    EXPECT_EQ(get("a.pdf"), source);
    EXPECT_EQ(panels.asked.value(0),
              AskedPanel(SavePanel{"a (edited).pdf", QUrl::fromLocalFile(m_folder.path())}));
    EXPECT_FALSE(file->isEdited);
    EXPECT_EQ(file->url, url("a.pdf"));
    EXPECT_EQ(model->toast.value(), Toast({"Saved “out.pdf”", url("out.pdf")}));
    EXPECT_EQ(savedFiles(), 1);
    model->turn(file, file->targetIDs(), true);
    EXPECT_TRUE(file->isEdited);
}

TEST_F(Saving, TakesThePagesAsTheyWereWhenItBegan)
{
    const OpenFilePtr file = open({putPdf("a.pdf", 2)});
    panels.saveAnswers << url("out.pdf");
    await(model->saveAs(file));
    EXPECT_EQ(model->busy.value()->title, "Saving…");
    model->deletePages(file, at(*file, {1}));
    model->close(file);
    runUntilIdle();
    EXPECT_EQ(textsIn(path("out.pdf")), "a-1 a-2");
}

TEST_F(Saving, LocksTheCopyOfALockedFileAndExtractLeavesItAsItWas)
{
    answerPasswords({{"a.pdf", {"pässword"}}});
    await(model->insertPages(open({putPdf("b.pdf", 1)}), {putLockedPdf("a.pdf", 3, "pässword")}));
    const OpenFilePtr file = open({url("a.pdf")}); // which the engine holds unlocked
    EXPECT_EQ(questions.size(), 1);
    saveAs(file, "all.pdf");
    model->turn(file, at(*file, {1}), true);
    const QSet<QUuid> selected = at(*file, {3, 1});
    file->selection = selected;
    saveTo("some.pdf", [&] { return model->extract(file); });
    EXPECT_EQ(std::get<SavePanel>(panels.asked.value(1)).name, "a (pages 1, 3).pdf");
    EXPECT_EQ(file->selection.value(), selected);
    EXPECT_TRUE(file->isEdited);
    for (const QString name : {"all.pdf", "some.pdf"})
        EXPECT_EQ(runTool("qpdf", {"--requires-password", path(name)}).exitCode, 0);
    EXPECT_EQ(textsIn(path("all.pdf"), "pässword"), "a-1 a-2 a-3");
    EXPECT_EQ(textsIn(path("some.pdf"), "pässword"), "a-1 a-3");
}

TEST_F(Saving, RefusesEveryWayToASource)
{
    const OpenFilePtr file = open({putPdf("a.pdf", 1)});
    await(model->insertPages(file, {putPicture("p.png")}));
    ASSERT_TRUE(QFile::link(path("a.pdf"), path("soft.pdf")));
    ASSERT_TRUE(QFile::link(path("soft.pdf"), path("twice.pdf")));
    ASSERT_TRUE(QFile::link(m_folder.path(), path("folder")));
    std::filesystem::create_hard_link(path("a.pdf").toStdString(), path("hard.pdf").toStdString());
    std::filesystem::create_hard_link(path("p.png").toStdString(), path("picture.pdf").toStdString());
    for (const QString name :
         {"a.pdf", "soft.pdf", "twice.pdf", "folder/a.pdf", "folder/../a.pdf", "hard.pdf", "picture.pdf"})
        EXPECT_TRUE(model->isInUse(url(name))) << name.toStdString();
    const QByteArray source = get("a.pdf");
    saveAs(file, "folder/hard.pdf");
    EXPECT_EQ(error(), inUse.arg("hard.pdf"));
    EXPECT_EQ(get("a.pdf"), source);
    EXPECT_TRUE(file->isEdited);

    ASSERT_TRUE(QFile::rename(path("a.pdf"), path("renamed.pdf")));
    EXPECT_TRUE(model->isInUse(url("renamed.pdf")) && model->isInUse(url("a.pdf")));
    putPdf("a.pdf", 1); // another one in its place
    EXPECT_TRUE(model->isInUse(url("renamed.pdf")));
    model->close(file);
    EXPECT_FALSE(model->isInUse(url("renamed.pdf")) || model->isInUse(url("a.pdf")));
}

TEST_F(Saving, RefusesATargetThatIsOpenedWhileTheCopyIsMade)
{
    const OpenFilePtr file = open({putPdf("a.pdf", 1)});
    putPdf("b.pdf", 1);
    const QByteArray other = get("b.pdf");
    panels.saveAnswers << url("b.pdf");
    await(model->saveAs(file));
    QCoro::Task<> opening = model->open({url("b.pdf")});
    runUntilIdle();
    await(std::move(opening));
    EXPECT_EQ(error(), inUse.arg("b.pdf"));
    EXPECT_EQ(get("b.pdf"), other);
}

TEST_F(Saving, PanelsCompleteTheName)
{
    put("there.pdf", "x");
    using Row = std::tuple<QString, QList<bool>, QString, int>;
    for (const auto& [chosen, replace, want, count] :
         {Row{"new.PDF", {}, "new.PDF", 1}, Row{"new.v2", {}, "new.v2.pdf", 1},
          Row{"there.pdf", {}, "there.pdf", 1}, Row{"there", {true}, "there.pdf", 2},
          Row{"there", {false}, "", 3}}) {
        panels.asked.clear();
        panels.saveAnswers << url(chosen);
        panels.replaceAnswers << replace;
        const std::optional<QUrl> got = await(model->chooseSaveURL("x", url("there.pdf")));
        EXPECT_EQ(got ? got->fileName() : QString(), want);
        EXPECT_EQ(panels.asked.size(), count) << chosen.toStdString();
    }
    EXPECT_EQ(panels.asked.value(2), AskedPanel(SavePanel{"there.pdf", folderOf(url("there.pdf"))}));
}

TEST_F(Saving, AFullDiskIsToldAndTheDocumentStaysEdited)
{
    ASSERT_TRUE(QFile::link("/dev/full", path("full.pdf")));
    const OpenFilePtr file = open({putPdf("a.pdf", 2)});
    model->turn(file, file->targetIDs(), true);
    saveAs(file, "full.pdf");
    EXPECT_EQ(error(), "No space left on device");
    EXPECT_TRUE(file->isEdited);
    EXPECT_EQ(toast(), "");
    EXPECT_EQ(savedFiles(), 0);
}

TEST_F(Saving, AModelThatGoesTakesItsJobAlong)
{
    const OpenFilePtr file = open({putPdf("a.pdf", 1)});
    panels.saveAnswers << url("out.pdf");
    await(model->saveAs(file));
    model.reset();
    drainEngine();
    await(inBackground([] {})); // behind the write, had there been one
    EXPECT_FALSE(QFile::exists(path("out.pdf")));
}

TEST_F(Saving, ASecondJobIsDropped)
{
    const Answer<bool> go;
    const auto waiting = [go](std::stop_token stop) { return wait(go, stop); };
    model->run("First", waiting);
    model->run("Second", waiting);
    EXPECT_EQ(model->busy.value()->title, "First");
    Answer(go).give(true);
    EXPECT_FALSE(model->busy.value());
    EXPECT_EQ(error(), "This couldn't be finished. Try again.") << "of a failure of unknown kind";
}

TEST_F(Saving, ToastsStayTheirTimeAndTheNewerOneTakesOver)
{
    const auto pass = [this](std::chrono::milliseconds time) {
        clock.advance(time);
        QCoreApplication::processEvents();
        return toast();
    };
    model->showToast("Short");
    EXPECT_EQ(pass(2499ms), "Short");
    EXPECT_EQ(pass(1ms), "");
    model->showToast("First", url("a.pdf"));
    pass(5000ms);
    model->showToast("Second", url("b.pdf"));
    EXPECT_EQ(pass(5999ms), "Second");
    EXPECT_EQ(pass(1ms), "");
    model->showToast("Last");
    model.reset();
    clock.advance(2500ms); // touches nothing that is gone
    QCoreApplication::processEvents();
}

} // namespace folvane
