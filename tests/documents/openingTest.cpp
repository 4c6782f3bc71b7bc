#include "documents/ModelTest.h"
#include "documents/fileNames.h"

namespace folvane {

namespace {

const QByteArray noPages = "%PDF-1.4\n1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj "
                           "2 0 obj<</Type/Pages/Count 0/Kids[]>>endobj trailer<</Root 1 0 R/Size 3>>";

class Opening : public ModelTest {
protected:
    QStringList names() const
    {
        QStringList all;
        for (const OpenFilePtr& file : model->files.value())
            all << file->name;
        return all;
    }
};

} // namespace

TEST_F(Opening, NothingChangesNothing)
{
    await(model->open({}));
    EXPECT_EQ(error(), "");
    EXPECT_TRUE(model->destination.value()->is(Destination::Place::Home));
}

TEST_F(Opening, OfTwoPdfsAndTwoPicturesGivesThreeDocuments)
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
}

TEST_F(Opening, TheSamePdfAgainShowsItWithItsEdits)
{
    const QUrl url = putPdf("a.pdf", 2);
    const OpenFilePtr first = open({url});
    model->turn(first, first->targetIDs(), true);
    open({putPdf("b.pdf", 1)});
    await(model->open({url}, Tool::Split));
    EXPECT_EQ(shown(), first);
    EXPECT_TRUE(first->isEdited);
    EXPECT_EQ(model->files.value().size(), 2);
    EXPECT_EQ(model->sheet.value(), FileSheet({FileSheet::Kind::Split, first->id}));
}

TEST_F(Opening, TheSamePdfTwiceAtOnceGivesOneDocument)
{
    const QUrl url = putPdf("a.pdf", 1);
    QCoro::Task<> first = model->open({url});
    QCoro::Task<> second = model->open({url});
    await(std::move(first));
    await(std::move(second));
    EXPECT_EQ(names(), QStringList("a"));
}

TEST_F(Opening, TheSamePictureAgainIsAnotherDocument)
{
    const QUrl url = putPicture("a.png");
    open({url});
    open({url});
    EXPECT_EQ(names(), QStringList({"a", "a"}));
}

struct RefusalCase {
    const char* name;
    QString file;
    QByteArray bytes;
    QString words;
};

class Refusals : public Opening, public testing::WithParamInterface<RefusalCase> {};

TEST_P(Refusals, SayWhichFileAndGoOn)
{
    const QUrl bad = put(GetParam().file, GetParam().bytes);
    open({putPdf("good.pdf", 1), bad});
    EXPECT_EQ(error(), GetParam().words);
    EXPECT_EQ(names(), QStringList("good"));
    EXPECT_EQ(shown()->name, "good");
}

INSTANTIATE_TEST_SUITE_P(
    Rows, Refusals,
    testing::Values(RefusalCase{"EmptyPdf", "a.pdf", "",
                                "“a.pdf” can't be opened. It may be damaged or not a PDF."},
                    RefusalCase{"TextNamedPdf", "a b.pdf", "Dear all,",
                                "“a b.pdf” can't be opened. It may be damaged or not a PDF."},
                    RefusalCase{"NoPages", "none.pdf", noPages,
                                "“none.pdf” can't be opened. It may be damaged or not a PDF."},
                    RefusalCase{"PictureThatIsNone", "100%1.png", "x", "“100%1.png” can't be opened."},
                    RefusalCase{"NeitherIsSkipped", "a.txt", "x", ""}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(Opening, APdfWithoutPagesIsRefusedAgain) // the engine answers for what it holds without looking
{
    const QUrl url = put("none.pdf", noPages);
    open({url});
    model->errorMessage = std::nullopt;
    open({url});
    EXPECT_EQ(error(), "“none.pdf” can't be opened. It may be damaged or not a PDF.");
    EXPECT_TRUE(names().isEmpty());
}

TEST_F(Opening, OfOtherFilesOnlyIsRefused)
{
    await(model->open({put("report.dat", get(QUrl(putPdf("a.pdf", 1)).fileName()))}));
    EXPECT_EQ(error(), "Folvane opens PDFs and images.");
    EXPECT_TRUE(names().isEmpty());
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
    runUntil([this] { return model->passwordRequest.value().has_value(); });
    QCoro::Task<> second = model->open({putLockedPdf("b.pdf", 1, "b")});
    drainEngine();
    ASSERT_TRUE(model->passwordRequest.value());
    EXPECT_EQ(model->passwordRequest.value()->fileName, "a.pdf");
    model->answerPassword("a");
    model->answerPassword(std::nullopt); // the same prompt reports its end again
    await(std::move(first));
    EXPECT_EQ(names(), QStringList("a"));
    runUntil([this] { return model->passwordRequest.value().has_value(); });
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
    open({locked, pageless, shown});
    EXPECT_EQ(names(), QStringList("c"));
    const Thumbnails::Key picture{{shown, 0}, 0, 50};
    await(model->thumbnails().load(picture));
    for (const QUrl& url : {locked, pageless, shown}) {
        QFile::remove(url.toLocalFile());
        putPdf(lastPathComponent(url), 2);
    }
    await(model->addToMerge({locked, pageless, shown}));
    const auto pagesOfRows = [this] {
        QList<size_t> counts;
        for (const MergeItem& item : model->merge.items.value())
            counts.append(item.pages.size());
        return counts;
    };
    EXPECT_EQ(pagesOfRows(), QList<size_t>({2, 2, 1}));
    EXPECT_TRUE(model->thumbnails().contains(picture));
    model->merge.clear();
    model->close(model->files.value().first());
    await(model->addToMerge({shown}));
    EXPECT_EQ(pagesOfRows(), QList<size_t>({2}));
    EXPECT_FALSE(model->thumbnails().contains(picture));
    EXPECT_EQ(questions, QStringList("a.pdf"));
}

TEST_F(Opening, EndsWhenTheModelGoes)
{
    QCoro::Task<> asking = model->open({putLockedPdf("a.pdf", 1, "a"), putPdf("c.pdf", 1)});
    QCoro::Task<> waiting = model->open({putLockedPdf("b.pdf", 1, "b")});
    drainEngine();
    QCoro::Task<std::optional<AppModel::Loaded>> inTheEngine = model->load(url("c.pdf"));
    model.reset();
    await(std::move(asking));
    await(std::move(waiting));
    await(std::move(inTheEngine));
    EXPECT_EQ(questions.size(), 0);
}

TEST_F(Opening, OfADocumentThatWasClosedMeanwhileDoesNotShowIt)
{
    QCoro::Task<> opening = model->open({putPdf("a.pdf", 1), putLockedPdf("b.pdf", 1, "b")});
    runUntil([this] { return model->passwordRequest.value().has_value(); });
    model->close(model->files.value()[0]);
    model->answerPassword(std::nullopt);
    await(std::move(opening));
    EXPECT_TRUE(model->destination.value()->is(Destination::Place::Home));
}

TEST_F(Opening, AskedForByThePanel)
{
    panels.openAnswers << QList<QUrl>{putPdf("a.pdf", 1)};
    await(model->chooseAndOpen());
    EXPECT_EQ(names(), QStringList("a"));
    const OpenPanel want{true, {ContentType::Pdf, ContentType::Image}, "Choose PDFs or images"};
    EXPECT_EQ(panels.asked, QList<AskedPanel>({want}));
}

} // namespace folvane
