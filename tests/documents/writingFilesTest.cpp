#include "documents/ModelTest.h"

#include <QDir>

namespace folvane {

namespace {

class WritingFiles : public ModelTest {
protected:
    QStringList written() const { return QDir(m_folder.path()).entryList(QDir::Files, QDir::Name); }
    void write(const QList<FileName>& items, AppModel::MakeFile make)
    {
        panels.folderAnswers << QUrl::fromLocalFile(m_folder.path());
        await(model->writeFiles(items, url("near.pdf"), "Split Here", "Splitting…", make));
        runUntilIdle();
    }
};

QCoro::Task<QByteArray> bytes(int index, std::stop_token)
{
    co_return QByteArray::number(index);
}

} // namespace

TEST_F(WritingFiles, NeverReplaceButCountUp)
{
    put("a.txt", "kept");
    ASSERT_TRUE(QFile::link("/nowhere/at/all", path("a 2.txt")));
    preferences.setValue("friend.savedFiles", "39"); // as a settings file gives it
    write({{"a", "txt"}, {"a", "txt"}, {"b", "txt"}}, [this](int index, std::stop_token stop) {
        EXPECT_EQ(model->busy.value()->title, "Splitting…");
        return bytes(index, stop);
    });
    EXPECT_EQ(written(), QStringList({"a 3.txt", "a 4.txt", "a.txt", "b.txt"}));
    EXPECT_EQ(get("a.txt") + get("a 3.txt") + get("a 4.txt") + get("b.txt"), "kept012");
    EXPECT_EQ(model->toast.value(), Toast({"Saved 3 files", url("a 3.txt")}));
    EXPECT_EQ(savedFiles(), 42);
    const FolderPanel want{QUrl::fromLocalFile(m_folder.path()), "Split Here"};
    EXPECT_EQ(panels.asked, QList<AskedPanel>({want}));
    write({{"one", "txt"}}, bytes);
    EXPECT_EQ(model->toast.value()->text, "Saved “one.txt”");
}

TEST_F(WritingFiles, CancelKeepsWhatIsWrittenAndWritesNoMore)
{
    write({{"a", "txt"}, {"b", "txt"}, {"c", "txt"}}, [this](int index, std::stop_token stop) {
        if (index == 1)
            model->busy.value()->task.request_stop();
        return bytes(index, stop);
    });
    EXPECT_EQ(written(), QStringList("a.txt"));
    EXPECT_FALSE(model->toast.value() || model->errorMessage.value());
    EXPECT_EQ(savedFiles(), 0);
}

TEST_F(WritingFiles, AFailureEndsTheJobInWords)
{
    write({{"a", "txt"}, {"no/such/folder", "txt"}, {"c", "txt"}}, bytes);
    EXPECT_EQ(written(), QStringList("a.txt"));
    EXPECT_EQ(error(), "No such file or directory");
    EXPECT_FALSE(model->toast.value());
}

} // namespace folvane
