#include "tools/compress/CompressSheet.h"

#include "controls/ChoiceRow.h"
#include "controls/StepSlider.h"
#include "controls/accessibility.h"
#include "controls/sheets/NoteBanner.h"
#include "documents/ModelTest.h"
#include "platform/texts/localeTexts.h"
#include "tools/pdfSamples.h"

#include <QAccessible>
#include <QApplication>
#include <QSignalSpy>
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
    ChoiceRow* row(int position) const { return sheet->findChildren<ChoiceRow*>()[position]; }
    StepSlider& slider() const { return *sheet->findChild<StepSlider*>(); }
    Button* button(const QString& text) const
    {
        for (Button* button : sheet->findChildren<Button*>())
            if (button->text() == text)
                return button;
        return nullptr;
    }
    /// A visible label that begins like this; empty when there is none.
    QString shown(const QString& beginning) const
    {
        for (const QLabel* label : sheet->findChildren<QLabel*>())
            if (label->isVisible() && label->text().startsWith(beginning))
                return label->text();
        return {};
    }
    void press(Qt::Key key) const { QTest::keyClick(QApplication::focusWidget(), key); }
    /// What a screen reader says behind the title: ", 1.2 MB", or nothing while there is no size.
    QString value(int position) const
    {
        return row(position)->accessibleName().mid(row(position)->text().size());
    }
    QStringList values() const { return {value(Original), value(Medium), value(Small), value(UpTo)}; }
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

TEST_F(Compress, ShowsEachSizeAsSoonAsItIsKnownAndSavesJustThat)
{
    open(putPhotos(path("Photos.pdf"), 1));
    EXPECT_EQ(sheet->windowTitle(), "Compress “Photos”");
    EXPECT_TRUE(row(Medium)->isChecked());
    EXPECT_FALSE(button("Save…")->isEnabled());
    runUntilKnown(Original);
    EXPECT_FALSE(button("Save…")->isEnabled()) << "the chosen one is not there yet";
    QTest::mouseClick(row(Original), Qt::LeftButton);
    EXPECT_TRUE(button("Save…")->isEnabled());
    QTest::mouseClick(row(Small), Qt::LeftButton, {}, QPoint(row(Small)->width() - 5, 5));
    EXPECT_FALSE(button("Save…")->isEnabled());
    runUntilKnown(Small);
    EXPECT_EQ(value(UpTo), QString()) << "it shows only while it is chosen";

    panels.saveAnswers.enqueue(url("out.pdf"));
    QTest::mouseClick(button("Save…"), Qt::LeftButton);
    EXPECT_FALSE(sheet->isVisible());
    runUntilIdle();
    const qint64 bytes = get("out.pdf").size();
    EXPECT_EQ(value(Small), ", " + byteCount(bytes));
    ASSERT_EQ(panels.asked.size(), 1);
    EXPECT_EQ(std::get<SavePanel>(panels.asked.first()).name, "Photos (" + byteCount(bytes) + ").pdf");
    EXPECT_FALSE(file->isEdited);
    EXPECT_EQ(complaintsAbout(path("out.pdf")), QString());
}

TEST_F(Compress, IsWorkedWithTheKeyboard)
{
    open(putPdf("a.pdf", 1));
    runUntilKnown(Small);
    EXPECT_TRUE(row(Medium)->hasFocus());
    press(Qt::Key_Up);
    EXPECT_TRUE(row(Original)->isChecked());
    for (int i = 0; i < 3; ++i)
        press(Qt::Key_Down);
    EXPECT_TRUE(row(UpTo)->isChecked());
    press(Qt::Key_Tab);
    ASSERT_TRUE(slider().hasFocus());
    EXPECT_EQ(slider().value(), 4);
    press(Qt::Key_Right);
    EXPECT_EQ(row(UpTo)->text(), "Up to 1.5 MB");
    press(Qt::Key_Home);
    EXPECT_EQ(row(UpTo)->text(), "Up to 0.2 MB");
    EXPECT_EQ(preferences.value("compress.targetBytes").toInt(), 200'000);
    press(Qt::Key_End);
    EXPECT_EQ(slider().value(), 13);
    runUntilKnown(UpTo);
    panels.saveAnswers.enqueue(url("out.pdf"));
    press(Qt::Key_Return);
    EXPECT_FALSE(sheet->isVisible());
    runUntilIdle();
    EXPECT_EQ(complaintsAbout(path("out.pdf")), QString());
}

TEST_F(Compress, EscapeEndsAllWork)
{
    open(putPhotos(path("a.pdf"), 1));
    const QSignalSpy finished(sheet.get(), &QDialog::rejected);
    QTest::mouseClick(row(UpTo), Qt::LeftButton);
    press(Qt::Key_Escape);
    EXPECT_EQ(finished.size(), 1);
    const QStringList known = values();
    drainEngine();
    EXPECT_EQ(values(), known);
    EXPECT_TRUE(panels.asked.isEmpty());
}

TEST_F(Compress, ReturnDoesNothingWhileThereIsNothingToSave)
{
    open(putPhotos(path("a.pdf"), 1));
    press(Qt::Key_Return);
    EXPECT_TRUE(sheet->isVisible());
    EXPECT_TRUE(panels.asked.isEmpty());
}

TEST_F(Compress, WarnsOfPicturesAndOfALimitOutOfReach)
{
    preferences.setValue("compress.targetBytes", 200'000);
    open(putPhotos(path("many.pdf"), 12));
    runUntilKnown(Small);
    QTest::mouseClick(row(UpTo), Qt::LeftButton);
    const int withoutWarnings = settledHeight();
    runUntilKnown(UpTo);
    EXPECT_EQ(shown("To fit"), "To fit, the pages became pictures: text in this copy can't be selected or "
                               "searched. The original keeps its text.");
    const QString size = value(UpTo).mid(2);
    EXPECT_EQ(shown("Can't"), "Can't get under 0.2 MB. The smallest Folvane can make is " + size + ".");
    EXPECT_TRUE(button("Save…")->isEnabled());
    EXPECT_EQ(shown("Pictures in"), QString());

    const int height = settledHeight();
    EXPECT_GT(height, withoutWarnings);
    constexpr int edge = 14; // from where the knob's middle can be
    QTest::mouseClick(&slider(), Qt::LeftButton, {},
                      QPoint(edge + (slider().width() - 2 * edge) * 2 / 13, 10));
    EXPECT_EQ(row(UpTo)->text(), "Up to 0.5 MB");
    EXPECT_FALSE(button("Save…")->isEnabled());
    EXPECT_EQ(shown("Can't"), QString()) << "not known yet";
    EXPECT_EQ(shown("To fit"), QString());
    EXPECT_EQ(settledHeight(), height) << "the sheet does not jump while it searches";
    runUntilKnown(UpTo);
    EXPECT_EQ(shown("Can't"), QString());
    EXPECT_NE(shown("To fit"), QString());
    EXPECT_LT(settledHeight(), height);
}

TEST_F(Compress, TellsWhenThereIsMostlyText)
{
    open(putPdf("text.pdf", 2));
    runUntilKnown(Small);
    EXPECT_TRUE(shown("Pictures in").startsWith("Pictures in this PDF can't get much smaller"));
}

TEST_F(Compress, ShowsWhatWentWrongAndSavesWhatWasDone)
{
    open(putPhotos(path("a.pdf"), 6));
    runUntilKnown(Original);
    put("a.pdf", "no longer what it was");
    QTest::mouseClick(row(Small), Qt::LeftButton);
    runUntil([this] { return !shown("A page of").isEmpty(); });
    EXPECT_FALSE(button("Save…")->isEnabled());
    QTest::mouseClick(row(Original), Qt::LeftButton);
    EXPECT_TRUE(button("Save…")->isEnabled());
}

TEST_F(Compress, TellsScreenReadersWhatTheEyesSee)
{
    installAccessibility();
    open(putPdf("a.pdf", 1));
    runUntilKnown(Small);
    QAccessibleInterface* small = QAccessible::queryAccessibleInterface(row(Small));
    EXPECT_EQ(small->role(), QAccessible::RadioButton);
    EXPECT_EQ(small->text(QAccessible::Name).section(u',', 0, 0), "Small");
    EXPECT_TRUE(small->text(QAccessible::Name).endsWith(" KB")
                || small->text(QAccessible::Name).endsWith("bytes"));
    EXPECT_EQ(small->text(QAccessible::Description), "The smallest readable file");
    QTest::mouseClick(row(UpTo), Qt::LeftButton);
    QAccessibleInterface* limit = QAccessible::queryAccessibleInterface(&slider());
    EXPECT_EQ(limit->role(), QAccessible::Slider);
    EXPECT_EQ(limit->text(QAccessible::Name), "Limit");
    EXPECT_EQ(limit->text(QAccessible::Value), "1 MB");
    limit->valueInterface()->setCurrentValue(0);
    EXPECT_EQ(limit->text(QAccessible::Value), "0.2 MB");
    EXPECT_EQ(row(UpTo)->text(), "Up to 0.2 MB");
}

} // namespace
} // namespace folvane
