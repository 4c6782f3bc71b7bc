#include "documents/ModelTest.h"

#include "support/madePdf.h"

#include <sys/stat.h>

namespace folvane {

namespace {

const QByteArray noPages = pdfOfPages({});

class Opening : public ModelTest {
protected:
    QStringList names() const
    {
        QStringList all;
        for (const OpenFilePtr& file : model->files.value())
            all << file->name;
        return all;
    }
    void runUntilAsked()
    {
        runUntil([this] { return model->passwordRequest.value().has_value(); });
    }
};

} // namespace

TEST_F(Opening, OfTwoPdfsAndThreePicturesGivesThreeDocuments)
{
    const OpenFilePtr last = open({putPicture("2.png"), putPdf("b.pdf", 2), putPicture("10.png"),
                                   put("notes.txt", "x"), putPdf("a.PDF", 1), putPicture("1.png")});
    EXPECT_EQ(names(), QStringList({"b", "a", "1"}));
    ASSERT_TRUE(last);
    EXPECT_EQ(order(*last), "1-1 2-1 10-1");
    EXPECT_TRUE(last->isEdited && !last->isPDF);
    EXPECT_FALSE(model->files.value()[0]->isEdited);
    EXPECT_EQ(order(*model->files.value()[0]), "b-1 b-2");
    EXPECT_EQ(error(), "");
    open({url("1.png")});
    EXPECT_EQ(names(), QStringList({"b", "a", "1", "1"})) << "a picture again is another document";
}

TEST_F(Opening, TheSamePdfAgainShowsItWithItsEdits)
{
    const QUrl url = putPdf("a.pdf", 2);
    QCoro::Task<> twin = model->open({url});
    const OpenFilePtr first = open({url});
    await(std::move(twin));
    model->turn(first, first->targetIDs(), true);
    open({putPdf("b.pdf", 1)});
    await(model->open({url}, Tool::Split));
    EXPECT_EQ(shown(), first);
    EXPECT_TRUE(first->isEdited);
    EXPECT_EQ(names(), QStringList({"a", "b"}));
    EXPECT_EQ(model->sheet.value(), FileSheet({FileSheet::Kind::Split, first->id}));
}

TEST_F(Opening, RefusesOneFileAndGoesOn)
{
    ASSERT_EQ(::mkdir(qPrintable(path("folder.pdf")), 0700), 0);
    ASSERT_EQ(::mkfifo(qPrintable(path("pipe.pdf")), 0600), 0);
    ASSERT_TRUE(QFile::link(path("nothing.pdf"), path("dangling.pdf")));
    put("empty.pdf", "");
    put("letter.pdf", "Dear all,");
    put("none.pdf", noPages);
    put("100%1.png", "x");
    for (const QString file :
         {"empty.pdf", "letter.pdf", "none.pdf", "none.pdf", "folder.pdf", "pipe.pdf", "dangling.pdf",
          "100%1.png"}) { // what the engine holds it answers for without looking
        const QString words = file.endsWith("png") ? QString("“%1” can't be opened.") : damaged;
        model->errorMessage = std::nullopt;
        const OpenFilePtr good = open({putPdf("good.pdf", 1), url(file)});
        EXPECT_EQ(error(), words.arg(file));
        EXPECT_EQ(names(), QStringList("good"));
        model->close(good);
    }
    open({putPdf("report.dat", 1)});
    EXPECT_EQ(error(), "Folvane opens PDFs and images.");
    EXPECT_TRUE(model->destination.value()->is(Destination::Place::Home));
}

TEST_F(Opening, ThreeLockedFilesAskOneAfterTheOther)
{
    answerPasswords({{"1.pdf", {"no", "", "one"}}, {"3.pdf", {"three"}}});
    open({putLockedPdf("1.pdf", 1, "one"), putLockedPdf("2.pdf", 1, "two"),
          putLockedPdf("3.pdf", 2, "three")});
    EXPECT_EQ(questions, QStringList({"1.pdf", "1.pdf!", "1.pdf!", "2.pdf", "3.pdf"}));
    EXPECT_EQ(names(), QStringList({"1", "3"}));
    EXPECT_EQ(model->files.value()[0]->password, "one");
    EXPECT_EQ(error(), "");
}

TEST_F(Opening, ASecondOneWaitsWithItsQuestion)
{
    QCoro::Task<> first = model->open({putLockedPdf("a.pdf", 1, "a")});
    runUntilAsked();
    QCoro::Task<> second = model->open({putLockedPdf("b.pdf", 1, "b")});
    drainEngine();
    EXPECT_EQ(model->passwordRequest.value().value().fileName, "a.pdf");
    model->answerPassword("a");
    model->answerPassword(std::nullopt); // the same prompt reports its end again
    await(std::move(first));
    EXPECT_EQ(names(), QStringList("a"));
    runUntilAsked();
    EXPECT_EQ(model->passwordRequest.value()->fileName, "b.pdf");
    model->answerPassword("b");
    await(std::move(second));
    EXPECT_EQ(names(), QStringList({"a", "b"}));
    EXPECT_FALSE(model->passwordRequest.value());
}

TEST_F(Opening, OfOneLockedFileTwiceAtOnceAsksOnce)
{
    const QUrl locked = putLockedPdf("a.pdf", 1, "a");
    QCoro::Task<> first = model->open({locked});
    QCoro::Task<> second = model->addToMerge({locked});
    drainEngine();
    model->answerPassword("a");
    await(std::move(first));
    await(std::move(second));
    EXPECT_EQ(names(), QStringList("a"));
    EXPECT_EQ(model->merge.items.value().size(), 1);
    EXPECT_FALSE(model->passwordRequest.value());
}

TEST_F(Opening, SeesThatAnotherFileHasTheNameUnlessWorkUsesTheOldOne)
{
    answerPasswords({});
    const QUrl locked = putLockedPdf("a.pdf", 1, "a"); // asked about, and given up
    const QUrl pageless = put("b.pdf", noPages);
    const QUrl shown = putPdf("c.pdf", 1);
    const OpenFilePtr file = open({locked, pageless, shown});
    const Thumbnails::Key picture{{shown, 0}, 0, 50};
    await(model->thumbnails().load(picture));
    for (const QUrl& url : {locked, pageless, shown}) {
        QFile::remove(url.toLocalFile());
        putPdf(lastPathComponent(url), 2);
    }
    await(model->addToMerge({locked, pageless, shown}));
    EXPECT_EQ(model->merge.pageCount(), 2 + 2 + 1);
    EXPECT_TRUE(model->thumbnails().contains(picture));
    model->merge.clear();
    model->close(file);
    await(model->addToMerge({shown}));
    EXPECT_EQ(model->merge.pageCount(), 2);
    EXPECT_FALSE(model->thumbnails().contains(picture));
    EXPECT_EQ(questions, QStringList("a.pdf"));
}

TEST_F(Opening, EndsWhenTheModelGoes)
{
    await(model->addToMerge({putPdf("d.pdf", 1)})); // what openings let go of is compared with what rows need
    QCoro::Task<> asking = model->open({putLockedPdf("a.pdf", 1, "a"), putPdf("c.pdf", 1)});
    QCoro::Task<> waiting = model->open({putLockedPdf("b.pdf", 1, "b")});
    drainEngine();
    QCoro::Task<> inTheEngine = model->addToMerge({url("c.pdf")});
    model.reset();
    await(std::move(asking));
    await(std::move(waiting));
    await(std::move(inTheEngine));
    EXPECT_EQ(questions.size(), 0);
}

TEST_F(Opening, OfADocumentThatWasClosedMeanwhileDoesNotShowIt)
{
    QCoro::Task<> opening = model->open({putPdf("a.pdf", 1), putLockedPdf("b.pdf", 1, "b")});
    runUntilAsked();
    model->close(model->files.value()[0]);
    model->answerPassword(std::nullopt);
    await(std::move(opening));
    EXPECT_TRUE(model->destination.value()->is(Destination::Place::Home));
}

} // namespace folvane
