#include "documents/ModelTest.h"

#include "platform/tasks/background.h"

#include <QFile>

#include <unistd.h>

#include <sys/stat.h>

namespace folvane {

namespace {

using namespace std::chrono_literals;

class Saving : public ModelTest {
protected:
    /// Save As to a file of this name, until the job has ended.
    void saveAs(const OpenFilePtr& file, const QString& name)
    {
        panels.saveAnswers << url(name);
        await(model->saveAs(file));
        runUntilIdle();
    }
    QString toast() const { return model->toast.value() ? model->toast.value()->text : QString(); }
};

QCoro::Task<> wait(Answer<bool> go, std::stop_token stop)
{
    co_await go;
    throwIfStopped(stop);
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
    EXPECT_EQ(complaintsAbout(path("out.pdf")), "");
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
    {
        const HeldBackground held;
        await(model->saveAs(file));
        ASSERT_TRUE(model->busy.value());
        EXPECT_EQ(model->busy.value()->title, "Saving…");
        model->deletePages(file, at(*file, {1}));
        model->close(file);
    }
    runUntilIdle();
    EXPECT_EQ(textsIn(path("out.pdf")), "a-1 a-2");
}

TEST_F(Saving, LocksTheCopyOfALockedFile)
{
    answerPasswords({{"a.pdf", {"pässword"}}});
    const OpenFilePtr file = open({putLockedPdf("a.pdf", 3, "pässword")});
    file->selection = at(*file, {2});
    saveAs(file, "all.pdf");
    panels.saveAnswers << url("one.pdf");
    await(model->extract(file));
    runUntilIdle();
    EXPECT_TRUE(needsPassword(path("all.pdf")) && needsPassword(path("one.pdf")));
    EXPECT_EQ(textsIn(path("all.pdf"), "pässword"), "a-1 a-2 a-3");
    EXPECT_EQ(textsIn(path("one.pdf"), "pässword"), "a-2");
}

TEST_F(Saving, LocksTheCopyAlsoWhenTheEngineHeldTheUnlockedSource)
{
    answerPasswords({{"a.pdf", {"right"}}});
    await(model->insertPages(open({putPdf("b.pdf", 1)}), {putLockedPdf("a.pdf", 1, "right")}));
    EXPECT_EQ(open({url("a.pdf")})->password, "right");
    EXPECT_EQ(questions.size(), 1);
}

TEST_F(Saving, ExtractLeavesTheDocumentAsItWas)
{
    const OpenFilePtr file = open({putPdf("a.pdf", 5)});
    model->turn(file, at(*file, {1}), true);
    file->selection = at(*file, {5, 1, 2});
    const QSet<QUuid> selected = file->selection;
    panels.saveAnswers << url("some.pdf");
    await(model->extract(file));
    runUntilIdle();
    EXPECT_EQ(std::get<SavePanel>(panels.asked.value(0)).name, "a (pages 1-2, 5).pdf");
    EXPECT_EQ(textsIn(path("some.pdf")), "a-1 a-2 a-5");
    EXPECT_TRUE(file->isEdited);
    EXPECT_EQ(file->selection.value(), selected);
}

TEST_F(Saving, CancelInThePanelChangesNothing)
{
    const OpenFilePtr file = open({putPdf("a.pdf", 1)});
    await(model->saveAs(file));
    await(model->extract(file));
    await(model->save("bytes", "a", file->url));
    EXPECT_EQ(panels.asked.size(), 3);
    EXPECT_FALSE(model->busy.value() || model->toast.value() || model->errorMessage.value());
}

TEST_F(Saving, OfBytesGoesTheSameWay)
{
    panels.saveAnswers << url("out.pdf");
    await(model->save("bytes", "out", std::nullopt));
    runUntilIdle();
    EXPECT_EQ(get("out.pdf"), "bytes");
    EXPECT_EQ(toast(), "Saved “out.pdf”");
}

TEST_F(Saving, RefusesEveryWayToASource)
{
    const OpenFilePtr file = open({putPdf("a.pdf", 1)});
    await(model->insertPages(file, {putPicture("p.png")}));
    ASSERT_TRUE(QFile::link(path("a.pdf"), path("soft.pdf")));
    ASSERT_TRUE(QFile::link(m_folder.path(), path("folder")));
    ASSERT_EQ(::link(qPrintable(path("a.pdf")), qPrintable(path("hard.pdf"))), 0);
    ASSERT_EQ(::link(qPrintable(path("p.png")), qPrintable(path("picture.pdf"))), 0);
    const QByteArray source = get("a.pdf");
    for (const QString name :
         {"a.pdf", "soft.pdf", "folder/a.pdf", "folder/../a.pdf", "hard.pdf", "picture.pdf"}) {
        model->errorMessage = std::nullopt;
        saveAs(file, name);
        EXPECT_EQ(error(), "“" + url(name).fileName()
                               + "” is open in Folvane, so it can't be replaced. Save under another name.");
    }
    EXPECT_EQ(get("a.pdf"), source);
    EXPECT_TRUE(file->isEdited);
    EXPECT_EQ(savedFiles(), 0);
}

TEST_F(Saving, RefusesASourceThatWasRenamed)
{
    const OpenFilePtr file = open({putPdf("a.pdf", 1)});
    ASSERT_TRUE(QFile::rename(path("a.pdf"), path("renamed.pdf")));
    EXPECT_TRUE(model->isInUse(url("renamed.pdf")));
    EXPECT_TRUE(model->isInUse(url("a.pdf")));
    putPdf("a.pdf", 1); // another one in its place
    EXPECT_TRUE(model->isInUse(url("renamed.pdf")));
    model->close(file);
    EXPECT_FALSE(model->isInUse(url("renamed.pdf")));
    EXPECT_FALSE(model->isInUse(url("a.pdf")));
}

TEST_F(Saving, RefusesATargetThatIsOpenedMeanwhile)
{
    const OpenFilePtr file = open({putPdf("a.pdf", 1)});
    const QByteArray other = get(putPdf("b.pdf", 1).fileName());
    QCoro::Task<> opening = model->open({url("b.pdf")}); // is first in the engine, but not in the list yet
    panels.saveAnswers << url("b.pdf");
    await(model->saveAs(file));
    runUntilIdle();
    await(std::move(opening));
    EXPECT_EQ(error(), "“b.pdf” is open in Folvane, so it can't be replaced. Save under another name.");
    EXPECT_EQ(get("b.pdf"), other);
}

struct PanelCase {
    const char* name;
    QString chosen;
    QList<bool> replace;
    QString want; // "" for none
    int panels;
};

class SavePanels : public Saving, public testing::WithParamInterface<PanelCase> {};

TEST_P(SavePanels, CompleteTheName)
{
    put("there.pdf", "x");
    panels.saveAnswers << url(GetParam().chosen);
    panels.replaceAnswers << GetParam().replace;
    const std::optional<QUrl> chosen = await(model->chooseSaveURL("x", url("there.pdf")));
    EXPECT_EQ(chosen ? chosen->fileName() : QString(), GetParam().want);
    EXPECT_EQ(panels.asked.size(), GetParam().panels);
    if (GetParam().panels > 2)
        EXPECT_EQ(panels.asked[2], AskedPanel(SavePanel{"there.pdf", QUrl::fromLocalFile(m_folder.path())}));
}

INSTANTIATE_TEST_SUITE_P(Rows, SavePanels,
                         testing::Values(PanelCase{"HasEnding", "there.pdf", {}, "there.pdf", 1},
                                         PanelCase{"EndingInCapitals", "new.PDF", {}, "new.PDF", 1},
                                         PanelCase{"EndingIsAdded", "new", {}, "new.pdf", 1},
                                         PanelCase{"OtherEnding", "new.v2", {}, "new.v2.pdf", 1},
                                         PanelCase{"ReplaceYes", "there", {true}, "there.pdf", 2},
                                         PanelCase{"ReplaceNoThenCancel", "there", {false}, "", 3}),
                         [](const auto& row) { return std::string(row.param.name); });

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

TEST_F(Saving, AReadOnlyFolderIsTold)
{
    if (wasLeftToAnOrdinaryUser())
        return;
    const OpenFilePtr file = open({putPdf("a.pdf", 1)});
    model->turn(file, file->targetIDs(), true);
    ASSERT_EQ(::chmod(qPrintable(m_folder.path()), 0555), 0);
    saveAs(file, "out.pdf");
    EXPECT_EQ(error(), "Permission denied");
    EXPECT_TRUE(file->isEdited);
    EXPECT_FALSE(QFile::exists(path("out.pdf")));
    ASSERT_EQ(::chmod(qPrintable(m_folder.path()), 0755), 0);
}

TEST_F(Saving, ASourceThatIsGoneFromTheEngineIsTold)
{
    const OpenFilePtr file = open({putPdf("a.pdf", 1)});
    await(engine.forget(file->url));
    saveAs(file, "out.pdf");
    EXPECT_EQ(error(), "A page of this file can't be read anymore. Open the file again.");
    EXPECT_FALSE(QFile::exists(path("out.pdf")));
}

TEST_F(Saving, ACancelledJobWritesNothingAndSaysNothing)
{
    const OpenFilePtr file = open({putPicture("a.png")});
    for (const bool isBuilt : {false, true}) {
        panels.saveAnswers << url("out.pdf");
        const HeldBackground held;
        await(model->saveAs(file));
        if (isBuilt)
            drainEngine();
        ASSERT_TRUE(model->busy.value());
        model->busy.value()->task.request_stop();
        runUntilIdle();
    }
    EXPECT_FALSE(QFile::exists(path("out.pdf")));
    EXPECT_FALSE(model->toast.value() || model->errorMessage.value());
    EXPECT_TRUE(file->isEdited);
}

TEST_F(Saving, AModelThatGoesTakesItsJobAlong)
{
    const OpenFilePtr file = open({putPdf("a.pdf", 1)});
    panels.saveAnswers << url("out.pdf");
    {
        const HeldBackground held;
        await(model->saveAs(file));
        model.reset();
        drainEngine();
    }
    await(inBackground([] {})); // behind the write, had there been one
    EXPECT_FALSE(QFile::exists(path("out.pdf")));
}

TEST_F(Saving, ASecondJobIsDropped)
{
    Answer<bool> go;
    model->run("First", [go](std::stop_token stop) { return wait(go, stop); });
    const OpenFilePtr file = open({putPdf("a.pdf", 1)});
    panels.saveAnswers << url("out.pdf");
    await(model->saveAs(file));
    EXPECT_EQ(panels.asked.size(), 1);
    EXPECT_EQ(model->busy.value()->title, "First");
    go.give(true);
    EXPECT_FALSE(model->busy.value());
    drainEngine();
    EXPECT_FALSE(QFile::exists(path("out.pdf")));
}

TEST_F(Saving, AFailureOfUnknownKindIsToldInPlainWords)
{
    model->run("Job",
               [](std::stop_token) -> QCoro::Task<> { throw std::runtime_error("vector::_M_range_check"); });
    EXPECT_EQ(error(), "This couldn't be finished. Try again.");
    EXPECT_FALSE(model->busy.value());
}

TEST_F(Saving, ToastsStayTheirTimeAndTheNewerOneTakesOver)
{
    const auto pass = [this](std::chrono::milliseconds time) {
        clock.advance(time);
        QCoreApplication::processEvents();
    };
    model->showToast("Short");
    pass(2499ms);
    EXPECT_EQ(toast(), "Short");
    pass(1ms);
    EXPECT_EQ(toast(), "");

    model->showToast("First", url("a.pdf"));
    pass(5000ms);
    model->showToast("Second", url("b.pdf"));
    pass(5999ms);
    EXPECT_EQ(toast(), "Second");
    pass(1ms);
    EXPECT_EQ(toast(), "");

    model->showToast("Last");
    model.reset();
    pass(2500ms); // touches nothing that is gone
}

} // namespace folvane
