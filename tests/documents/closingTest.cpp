#include "documents/ModelTest.h"

namespace folvane {

namespace {

class Closing : public ModelTest {
protected:
    OpenFilePtr lockedDocument(const QString& name)
    {
        answerPasswords({{name, {"x"}}});
        return open({putLockedPdf(name, 1, "x")});
    }
    bool isHome() const { return model->destination.value()->is(Destination::Place::Home); }
};

} // namespace

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
    model->close(b);
    EXPECT_TRUE(model->sheet.value()) << "it is about another document";
    EXPECT_EQ(shown(), c);
    model->close(c);
    EXPECT_TRUE(isHome());
    EXPECT_TRUE(model->files.value().isEmpty());
}

TEST_F(Closing, InAnotherPlaceStaysThere)
{
    const OpenFilePtr a = open({putPdf("a.pdf", 1)});
    model->destination = Destination(Destination::Place::Merge);
    model->close(a);
    EXPECT_TRUE(model->destination.value()->is(Destination::Place::Merge));
}

TEST_F(Closing, AsksOnlyAboutEditedDocuments)
{
    const OpenFilePtr a = open({putPdf("a.pdf", 1)});
    model->turn(a, a->targetIDs(), true);
    model->requestClose(a);
    EXPECT_EQ(model->closingFile.value(), a);
    EXPECT_EQ(model->files.value().size(), 1);
    model->close(a); // Don't Save
    EXPECT_EQ(model->closingFile.value(), nullptr);
    model->requestClose(open({putPdf("b.pdf", 1)}));
    EXPECT_EQ(model->closingFile.value(), nullptr);
    EXPECT_TRUE(model->files.value().isEmpty());
}

TEST_F(Closing, LetsGoOfSourcesThatNobodyElseUses)
{
    const OpenFilePtr locked = lockedDocument("locked.pdf");
    const OpenFilePtr other = open({putPdf("a.pdf", 1)});
    await(model->insertPages(other, {locked->url}));
    model->close(locked);
    EXPECT_TRUE(isHeld(locked->url));
    model->close(other);
    EXPECT_FALSE(isHeld(locked->url));
}

TEST_F(Closing, KeepsSourcesThatAreBeingInserted)
{
    const OpenFilePtr locked = lockedDocument("locked.pdf");
    const OpenFilePtr other = open({putPdf("a.pdf", 1)});
    QCoro::Task<> inserting = model->insertPages(other, {locked->url, putPicture("p.png")});
    drainEngine(); // the first is ready, the insertion not
    model->close(locked);
    await(std::move(inserting));
    EXPECT_EQ(order(*other), "a-1 locked-1 p-1");
    EXPECT_TRUE(isHeld(locked->url));
}

TEST_F(Closing, WhileInsertingLetsGoOfWhatWasInserted)
{
    const OpenFilePtr target = open({putPdf("a.pdf", 1)});
    answerPasswords({{"locked.pdf", {"x"}}});
    QCoro::Task<> inserting = model->insertPages(target, {putLockedPdf("locked.pdf", 1, "x")});
    model->close(target);
    await(std::move(inserting));
    EXPECT_FALSE(isHeld(url("locked.pdf")));
}

TEST_F(Closing, AndOpeningAgainAtOnceLosesNothing)
{
    const OpenFilePtr file = open({putPdf("a.pdf", 2), putPdf("b.pdf", 1)});
    await(model->insertPages(file, {url("a.pdf")}));
    model->close(model->files.value()[0]);
    model->close(file);
    const OpenFilePtr again = open({url("a.pdf")});
    drainEngine();
    panels.saveAnswers << url("out.pdf");
    await(model->saveAs(again));
    runUntilIdle();
    EXPECT_EQ(error(), "");
    EXPECT_EQ(textsIn(path("out.pdf")), "a-1 a-2");
}

TEST_F(Closing, QuittingNamesAllEditedDocumentsInOneSentence)
{
    const OpenFilePtr a = open({putPdf("a.pdf", 1)});
    open({putPdf("clean.pdf", 1)});
    EXPECT_FALSE(model->quitQuestion());
    EXPECT_TRUE(model->quitsWithLastWindow());
    model->turn(a, a->targetIDs(), true);
    open({putPicture("scan.png")});
    const QuitQuestion want{"Quit without saving?",
                            "Changes in a and scan aren't saved. Use Save As… to keep them.",
                            {"a", "scan"}};
    EXPECT_EQ(model->quitQuestion(), want);
    EXPECT_FALSE(model->quitsWithLastWindow());
}

} // namespace folvane
