#include "documents/ModelTest.h"

namespace folvane {

using Closing = ModelTest;

TEST_F(Closing, OfTheShownDocumentShowsTheNewestThatIsLeft)
{
    const OpenFilePtr a = open({putPdf("a.pdf", 1)});
    const OpenFilePtr b = open({putPdf("b.pdf", 1)});
    const OpenFilePtr c = open({putPdf("c.pdf", 1)});
    open({a->url});
    model->signingFileID = a->id;
    model->sheet = FileSheet{FileSheet::Kind::Compress, a->id};
    model->close(a);
    EXPECT_EQ(shown(), c);
    EXPECT_FALSE(model->signingFileID.value());
    EXPECT_FALSE(model->sheet.value());
    model->sheet = FileSheet{FileSheet::Kind::Compress, c->id};
    model->destination = Destination(Destination::Place::Merge);
    model->close(b);
    EXPECT_TRUE(model->sheet.value()) << "it is about another document";
    EXPECT_TRUE(model->destination.value()->is(Destination::Place::Merge));
    open({c->url});
    model->close(c);
    EXPECT_TRUE(model->destination.value()->is(Destination::Place::Home));
    EXPECT_TRUE(model->files.value().isEmpty());
}

TEST_F(Closing, AndQuittingAskOnlyAboutEditedDocuments)
{
    const OpenFilePtr a = open({putPdf("a.pdf", 1)});
    EXPECT_FALSE(model->quitQuestion());
    EXPECT_TRUE(model->quitsWithLastWindow());
    model->turn(a, a->targetIDs(), true);
    model->requestClose(open({putPdf("clean.pdf", 1)}));
    EXPECT_EQ(model->closingFile.value(), nullptr);
    EXPECT_EQ(model->files.value(), QList{a});
    open({putPicture("scan.png")});
    const QuitQuestion want{"Quit without saving?",
                            "Changes in a and scan aren't saved. Use Save As… to keep them.",
                            {"a", "scan"}};
    EXPECT_EQ(model->quitQuestion(), want);
    EXPECT_FALSE(model->quitsWithLastWindow());
    model->requestClose(a);
    EXPECT_EQ(model->closingFile.value(), a);
    EXPECT_EQ(model->files.value().size(), 2);
    model->close(a); // Don't Save
    EXPECT_EQ(model->closingFile.value(), nullptr);
}

TEST_F(Closing, LetsGoOfSourcesOnceNobodyElseUsesThem)
{
    answerPasswords({{"locked.pdf", {"x", "x"}}});
    const OpenFilePtr file = open({putLockedPdf("locked.pdf", 1, "x")});
    const OpenFilePtr other = open({putPdf("a.pdf", 1)});
    QCoro::Task<> inserting = model->insertPages(other, {file->url, putPicture("p.png")});
    drainEngine(); // the first is ready, the insertion not
    model->close(file);
    await(std::move(inserting));
    EXPECT_EQ(order(*other), "a-1 locked-1 p-1");
    EXPECT_TRUE(isHeld(file->url));
    model->close(other);
    EXPECT_FALSE(isHeld(file->url));

    const OpenFilePtr last = open({putPdf("b.pdf", 1)});
    inserting = model->insertPages(last, {file->url});
    model->close(last);
    await(std::move(inserting));
    EXPECT_EQ(questions.size(), 2);
    EXPECT_FALSE(isHeld(file->url)) << "there is no document any more that could have it";
}

TEST_F(Closing, AndOpeningAgainAtOnceLosesNothing)
{
    const OpenFilePtr file = open({putPdf("a.pdf", 2), putPdf("b.pdf", 1)});
    await(model->insertPages(file, {url("a.pdf")}));
    model->close(model->files.value()[0]);
    model->close(file);
    const OpenFilePtr again = open({url("a.pdf")});
    drainEngine();
    saveAs(again, "out.pdf");
    EXPECT_EQ(error(), "");
    EXPECT_EQ(textsIn(path("out.pdf")), "a-1 a-2");
}

} // namespace folvane
