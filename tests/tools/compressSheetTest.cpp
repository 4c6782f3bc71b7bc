#include "tools/compress/CompressSheet.h"

#include "controls/choices/ChoiceRow.h"
#include "controls/sliders/StepSlider.h"
#include "documents/ModelTest.h"
#include "tools/pdfSamples.h"

#include <QApplication>
#include <QLabel>
#include <QTest>

namespace folvane {
namespace {

enum { Original, Medium, Small, UpTo };

class Compress : public ModelTest {
protected:
    void open(const QUrl& url)
    {
        file = ModelTest::open({url});
        sheet = std::make_unique<CompressSheet>(*model, file);
        sheet->open();
        sheet->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(sheet.get()));
    }
    ChoiceRow& row(int position) const { return *sheet->findChildren<ChoiceRow*>()[position]; }
    void choose(int position) const { QTest::mouseClick(&row(position), Qt::LeftButton); }
    void press(Qt::Key key) const { QTest::keyClick(QApplication::focusWidget(), key); }
    bool canSave() const
    {
        const QList<Button*> buttons = sheet->findChildren<Button*>();
        return std::ranges::any_of(buttons,
                                   [](Button* one) { return one->text() == "Save…" && one->isEnabled(); });
    }
    /// A visible label that begins like this; empty when there is none.
    QString shown(const QString& beginning) const
    {
        for (const QLabel* label : sheet->findChildren<QLabel*>())
            if (label->isVisible() && label->text().startsWith(beginning))
                return label->text();
        return {};
    }
    /// What a screen reader says behind the title: ", 1.2 MB", or nothing while there is no size.
    QString value(int position) const
    {
        return row(position).accessibleName().mid(row(position).text().size());
    }
    /// Once all texts that wrap have found their lines.
    int settledHeight() const
    {
        for (int turn = 0; turn < 5; ++turn)
            QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        return sheet->height();
    }
    void runUntilKnown(int position)
    {
        runUntil([this, position] { return !value(position).isEmpty(); });
    }

    OpenFilePtr file;
    std::unique_ptr<CompressSheet> sheet;
};

TEST_F(Compress, SavesNothingThatIsNotKnownYetAndEndsByEscape)
{
    open(putPhotos(path("photos.pdf"), 1));
    EXPECT_TRUE(row(Medium).isChecked());
    press(Qt::Key_Return);
    EXPECT_TRUE(sheet->isVisible());
    runUntilKnown(Original);
    EXPECT_FALSE(canSave()) << "the chosen one is not there yet";
    choose(Original);
    EXPECT_TRUE(canSave());
    choose(UpTo);
    EXPECT_FALSE(canSave());
    press(Qt::Key_Escape);
    EXPECT_FALSE(sheet->isVisible());
    drainEngine();
    EXPECT_EQ(value(Small) + value(UpTo), QString()) << "all work has ended";
}

TEST_F(Compress, WarnsOfPicturesAndOfALimitOutOfReach)
{
    preferences.setValue("compress.targetBytes", 200'000);
    open(putPhotos(path("many.pdf"), 12));
    runUntilKnown(Small);
    choose(UpTo);
    const int withoutWarnings = settledHeight();
    runUntilKnown(UpTo);
    EXPECT_NE(shown("To fit, the pages became pictures"), QString());
    const QString size = value(UpTo).mid(2);
    EXPECT_EQ(shown("Can't"), "Can't get under 0.2 MB. The smallest Folvane can make is " + size + ".");
    EXPECT_TRUE(canSave());
    EXPECT_EQ(shown("Pictures in"), QString());

    const int height = settledHeight();
    EXPECT_GT(height, withoutWarnings);
    sheet->findChild<StepSlider*>()->setFocus();
    press(Qt::Key_Right);
    press(Qt::Key_Right);
    EXPECT_EQ(row(UpTo).text(), "Up to 0.5 MB");
    EXPECT_FALSE(canSave());
    EXPECT_EQ(shown("Can't") + shown("To fit"), QString()) << "not known yet";
    EXPECT_EQ(settledHeight(), height) << "the sheet does not jump while it searches";
    runUntilKnown(UpTo);
    EXPECT_EQ(shown("Can't"), QString());
    EXPECT_NE(shown("To fit"), QString());
    EXPECT_LT(settledHeight(), height);
}

} // namespace
} // namespace folvane
