#include "shell/WindowTest.h"

#include "support/await.h"
#include "tools/exportImages/ExportImagesSheet.h"
#include "tools/protect/PasswordSheet.h"
#include "tools/split/SplitSheet.h"

#include <QAbstractButton>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>

namespace folvane {
namespace {

class FileSheetsTest : public WindowTest {
protected:
    template <typename Sheet> Sheet* open(FileSheet::Kind kind, const OpenFilePtr& file)
    {
        model.sheet = FileSheet{kind, file->id};
        return shown<Sheet>();
    }
    static QStringList textsOf(const QWidget& sheet)
    {
        QStringList texts;
        for (const auto* label : sheet.findChildren<QLabel*>())
            if (label->isVisible() && !label->text().isEmpty())
                texts += label->text();
        return texts;
    }
    static QAbstractButton* button(const QWidget& sheet, const QString& text)
    {
        for (auto* one : sheet.findChildren<QAbstractButton*>())
            if (one->text() == text)
                return one;
        return nullptr;
    }
    static bool isChosen(const QWidget& sheet, const char* title)
    {
        return button(sheet, QLatin1String(title))->isChecked();
    }
    QString inFolder(const QString& name) const { return folder.filePath(name); }
};

enum class Dismissal { Escape, Cancel, Close, ClosedDocument };

class SheetDismissals : public FileSheetsTest, public testing::WithParamInterface<Dismissal> {};

TEST_P(SheetDismissals, ClearTheFieldAndWriteNothing)
{
    const OpenFilePtr file = openPages(2);
    auto* sheet = open<SplitSheet>(FileSheet::Kind::Split, file);
    ASSERT_TRUE(sheet);
    switch (GetParam()) {
    case Dismissal::Escape: QTest::keyClick(sheet, Qt::Key_Escape); break;
    case Dismissal::Cancel: press(sheet, QStringLiteral("Cancel")); break;
    case Dismissal::Close: sheet->close(); break;
    case Dismissal::ClosedDocument: model.close(file); break;
    }
    EXPECT_EQ(shown<SplitSheet>(), nullptr);
    EXPECT_EQ(model.sheet.value(), std::nullopt);
    EXPECT_TRUE(panels.asked.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Ways, SheetDismissals,
                         testing::Values(Dismissal::Escape, Dismissal::Cancel, Dismissal::Close,
                                         Dismissal::ClosedDocument));

TEST_F(FileSheetsTest, SplitBeginsWithTheSelectionAndSaysWhatItMakes)
{
    const OpenFilePtr file = openPages(9);
    clickPage(1);
    clickPage(2, Qt::ControlModifier);
    clickPage(4, Qt::ControlModifier);
    press(&window, QStringLiteral("Split"));
    auto* sheet = shown<SplitSheet>();
    ASSERT_TRUE(sheet);
    auto* ranges = qobject_cast<QLineEdit*>(sheet->focusWidget());
    ASSERT_TRUE(ranges);
    EXPECT_EQ(ranges->text(), QStringLiteral("2-3, 5"));
    EXPECT_TRUE(textsOf(*sheet).contains(QStringLiteral("Makes 2 files: 2-3, 5")));
    ranges->selectAll();
    QTest::keyClicks(ranges, QStringLiteral("12"));
    EXPECT_TRUE(textsOf(*sheet).contains(QStringLiteral("Use page numbers from 1 to 9, like 1-3, 5.")));
    EXPECT_FALSE(button(*sheet, QStringLiteral("Split…"))->isEnabled());
    QTest::keyClick(ranges, Qt::Key_Return);
    EXPECT_EQ(shown<SplitSheet>(), sheet) << "Return presses no disabled button";

    press(sheet, QStringLiteral("Every few pages"));
    auto* every = sheet->findChild<QSpinBox*>();
    EXPECT_TRUE(textsOf(*sheet).contains(QStringLiteral("A new file every 2 pages")));
    QTest::keyClick(every, Qt::Key_Up);
    QTest::keyClick(every, Qt::Key_Up);
    EXPECT_TRUE(textsOf(*sheet).contains(QStringLiteral("Makes 3 files: 1-4, 5-8, 9")));
    panels.folderAnswers.enqueue(QUrl::fromLocalFile(folder.path()));
    QTest::keyClick(every, Qt::Key_Return);
    EXPECT_EQ(shown<SplitSheet>(), nullptr);
    ASSERT_TRUE(waitFor([this] { return model.toast.value().has_value(); }));
    EXPECT_TRUE(QFile::exists(inFolder(QStringLiteral("report 5-8.pdf"))));
}

TEST_F(FileSheetsTest, PasswordsMustBeTheSame)
{
    auto* sheet = open<PasswordSheet>(FileSheet::Kind::Password, openPages(1));
    const QList<QLineEdit*> fields = sheet->findChildren<QLineEdit*>();
    const QAbstractButton* save = button(*sheet, QStringLiteral("Save Protected Copy…"));
    const QString mismatch = QStringLiteral("The passwords don't match.");
    EXPECT_EQ(button(*sheet, QStringLiteral("Save a Copy without Password…")), nullptr);
    EXPECT_FALSE(save->isEnabled());
    QTest::keyClicks(fields[0], QStringLiteral("Secret"));
    EXPECT_FALSE(textsOf(*sheet).contains(mismatch) || save->isEnabled());
    QTest::keyClicks(fields[1], QStringLiteral("secret"));
    EXPECT_TRUE(textsOf(*sheet).contains(mismatch));
    EXPECT_FALSE(save->isEnabled());
    fields[1]->clear();
    QTest::keyClicks(fields[1], QStringLiteral("Secret"));
    EXPECT_FALSE(textsOf(*sheet).contains(mismatch));
    panels.saveAnswers.enqueue(QUrl::fromLocalFile(inFolder(QStringLiteral("safe.pdf"))));
    QTest::keyClick(fields[1], Qt::Key_Return);
    EXPECT_EQ(shown<PasswordSheet>(), nullptr);
    ASSERT_TRUE(waitFor([this] { return model.toast.value().has_value(); }));
    const QUrl safe = QUrl::fromLocalFile(inFolder(QStringLiteral("safe.pdf")));
    EXPECT_EQ(await(engine.open(safe)).kind, OpenResult::Kind::NeedsPassword);
    EXPECT_EQ(await(engine.open(safe, QStringLiteral("Secret"))).kind, OpenResult::Kind::Opened);
}

TEST_F(FileSheetsTest, ALockedFileOffersACopyWithout)
{
    const QUrl locked = makeLocked(QStringLiteral("locked.pdf"), QStringLiteral("pw"));
    QCoro::Task<> opening = model.open({locked});
    ASSERT_TRUE(waitFor([this] { return model.passwordRequest.value().has_value(); }));
    model.answerPassword(QStringLiteral("pw"));
    await(std::move(opening));
    auto* sheet = open<PasswordSheet>(FileSheet::Kind::Password, model.files.value().first());
    EXPECT_EQ(sheet->findChildren<QLineEdit*>().first()->placeholderText(), QStringLiteral("New password"));
    panels.saveAnswers.enqueue(QUrl::fromLocalFile(inFolder(QStringLiteral("free.pdf"))));
    press(sheet, QStringLiteral("Save a Copy without Password…"));
    ASSERT_TRUE(waitFor([this] { return model.toast.value().has_value(); }));
    const QUrl free = QUrl::fromLocalFile(inFolder(QStringLiteral("free.pdf")));
    EXPECT_EQ(await(engine.open(free)).kind, OpenResult::Kind::Opened);
}

TEST_F(FileSheetsTest, ExportKeepsWhatWasChosen)
{
    const OpenFilePtr file = openPages(3);
    auto* sheet = open<ExportImagesSheet>(FileSheet::Kind::ExportImages, file);
    EXPECT_TRUE(textsOf(*sheet).contains(QStringLiteral("All 3 pages.")));
    EXPECT_TRUE(isChosen(*sheet, "PNG") && isChosen(*sheet, "Good (200 dpi)"));
    press(sheet, QStringLiteral("JPEG"));
    press(sheet, QStringLiteral("Screen (100 dpi)"));
    QTest::keyClick(sheet, Qt::Key_Escape);

    clickPage(1);
    sheet = open<ExportImagesSheet>(FileSheet::Kind::ExportImages, file);
    EXPECT_TRUE(textsOf(*sheet).contains(QStringLiteral("The 1 selected pages.")));
    EXPECT_TRUE(isChosen(*sheet, "JPEG") && isChosen(*sheet, "Screen (100 dpi)"));
    panels.folderAnswers.enqueue(QUrl::fromLocalFile(folder.path()));
    QTest::keyClick(sheet, Qt::Key_Return);
    ASSERT_TRUE(waitFor([this] { return model.toast.value().has_value(); }));
    EXPECT_TRUE(QFile::exists(inFolder(QStringLiteral("report page 2.jpg"))));
}

} // namespace
} // namespace folvane
