#include "shell/WindowTest.h"

#include "controls/sheets/Alert.h"
#include "controls/style/focusRing.h"
#include "documents/currentFile.h"
#include "shell/BusyOverlay.h"
#include "shell/QtPanels.h"
#include "shell/sidebar/FileRow.h"
#include "support/await.h"

#include <QAccessible>
#include <QApplication>

namespace folvane {
namespace {

class Keyboard : public WindowTest {
public:
    FileRow* row(int at) { return window.findChildren<FileRow*>().at(at); }
    const QUrl target = inFolder("copy.pdf");
    static void tabTo(QWidget* widget) { widget->setFocus(Qt::TabFocusReason); }
    void tabTo(const QString& name) { tabTo(button(name)); }
    static bool isActive(const QWidget* asked)
    {
        return QTest::qWaitFor([asked] { return QApplication::activeWindow() == asked; });
    }
};

struct Deed {
    const char* name;
    void (*act)(Keyboard&);
};

const Deed deeds[] = {
    {"OpeningByThePanelOfHome",
     [](Keyboard& on) {
         on.model.destination = Destination();
         on.panels.openAnswers.enqueue({on.makePdf("new.pdf", 3)});
         on.hand.press("Drop PDFs or images here");
         ASSERT_TRUE(on.waitFor([&on] { return on.model.files.value().size() == 3; }));
     }},
    {"ChoosingTheShownDocument",
     [](Keyboard& on) {
         on.tabTo(on.row(1));
         on.hand.key(Qt::Key_Return);
     }},
    {"GoingToTheNextFile",
     [](Keyboard& on) {
         on.tabTo(on.row(1));
         on.hand.key(Qt::Key_PageDown, Qt::ControlModifier);
     }},
    {"DeletingByTheButtonsKey",
     [](Keyboard& on) {
         on.clickPage(0);
         on.tabTo("Delete Pages");
         on.hand.key(Qt::Key_Space);
     }},
    {"AnError",
     [](Keyboard& on) {
         on.hand.key(Qt::Key_Delete);
         on.hand.key(Qt::Key_Return);
     }},
    {"AQuestion",
     [](Keyboard& on) {
         currentFile(on.model)->isEdited = true;
         on.hand.press("Close “two”");
         on.hand.press("Cancel");
     }},
    {"APanel",
     [](Keyboard& on) {
         QtPanels desktops;
         desktops.setWindow(&on.window);
         QCoro::Task<QList<QUrl>> choosing = desktops.chooseOpen({});
         on.hand.key(Qt::Key_Escape);
         EXPECT_EQ(await(std::move(choosing)), QList<QUrl>());
     }},
    {"AToastThatGoesWithIt",
     [](Keyboard& on) {
         on.model.showToast("Saved", on.target);
         on.tabTo("Show in Finder");
         on.model.toast = std::nullopt;
     }},
};

class PagesHaveTheKeyboard : public Keyboard, public testing::WithParamInterface<Deed> {};

TEST_P(PagesHaveTheKeyboard, After)
{
    openPages(3, "one");
    openPages(3, "two");
    GetParam().act(*this);
    ASSERT_TRUE(isActive(&window));
    EXPECT_EQ(QApplication::focusWidget(), &grid());
}

INSTANTIATE_TEST_SUITE_P(Deeds, PagesHaveTheKeyboard, testing::ValuesIn(deeds),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(Keyboard, AJobHearsEscapeAloneAndGivesTheKeyboardBack)
{
    openPages(3);
    clickPage(0);
    ASSERT_TRUE(waitFor([this] { return grid().isComplete(); }));
    const QImage before = grid().viewport()->grab().toImage();
    const BusyState job{"Saving…", {}};
    model.busy = job;
    hand.key(Qt::Key_Return);
    EXPECT_FALSE(job.task.stop_requested());
    hand.key(Qt::Key_Tab);
    const auto* overlay = window.findChild<BusyOverlay*>();
    EXPECT_TRUE(overlay->isAncestorOf(QApplication::focusWidget()));
    hand.key(Qt::Key_Escape);
    EXPECT_TRUE(job.task.stop_requested());
    EXPECT_TRUE(overlay->isVisible()) << "until the job has ended";
    model.busy = std::nullopt;
    EXPECT_FALSE(overlay->isVisible());
    EXPECT_EQ(QApplication::focusWidget(), &grid());
    EXPECT_EQ(grid().viewport()->grab().toImage(), before) << "Return has marked no page";
}

TEST_F(Keyboard, NeitherReturnNorSpaceReplacesAFile)
{
    QtPanels asking;
    asking.setWindow(&window);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space, Qt::Key_Escape}) {
        QCoro::Task<bool> replace = asking.confirmReplace(target);
        auto* question = shown<Alert>();
        ASSERT_TRUE(question && isActive(question));
        const auto* marked = qobject_cast<Button*>(question->focusWidget());
        EXPECT_TRUE(marked->text() == "Cancel" && showsFocus(*marked) && marked->isDefault());
        hand.key(key);
        EXPECT_FALSE(await(std::move(replace)));
    }
}

class ListOfFiles : public Keyboard {
protected:
    static constexpr int count = 24;
    void SetUp() override
    {
        window.resize(1000, 700);
        QList<QUrl> files;
        for (int number = 1; number <= count; ++number)
            files.append(makePdf(QStringLiteral("%1.pdf").arg(number), 1));
        await(model.open(files));
        ASSERT_TRUE(waitFor([this] { return isInSight(row(count - 1)); })) << "the last one is shown";
    }
    static bool isInSight(const QWidget* row) { return row->visibleRegion().boundingRect() == row->rect(); }
    int focused() { return int(window.findChildren<FileRow*>().indexOf(QApplication::focusWidget())); }
};

TEST_F(ListOfFiles, IsOneStopOfTabAndWalkedByArrows)
{
    for (const char* around : {"Home", "Open…", "Merge PDFs"})
        EXPECT_TRUE(isInSight(button(around))) << around;
    tabTo("Home");
    hand.key(Qt::Key_Tab);
    EXPECT_EQ(focused(), count - 1) << "at the document that is shown";
    struct Step {
        Qt::Key key;
        int row;
    };
    for (const Step step : {Step{Qt::Key_Down, count - 1}, Step{Qt::Key_Up, count - 2}, Step{Qt::Key_Home, 0},
                            Step{Qt::Key_Up, 0}, Step{Qt::Key_Down, 1}, Step{Qt::Key_Delete, 1},
                            Step{Qt::Key_End, count - 1}, Step{Qt::Key_Home, 0}}) {
        hand.key(step.key);
        EXPECT_EQ(focused(), step.row);
        EXPECT_TRUE(isInSight(row(step.row)));
    }
    EXPECT_EQ(model.files.value().size(), count) << "Delete closes nothing";
    hand.key(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), button("Open…"));
    hand.key(Qt::Key_Backtab);
    hand.key(Qt::Key_Space);
    EXPECT_EQ(currentFile(model), model.files.value().first());
}

TEST_F(ListOfFiles, IsAListToScreenReaders)
{
    QAccessibleInterface* item = QAccessible::queryAccessibleInterface(row(count - 1));
    EXPECT_EQ(item->role(), QAccessible::ListItem);
    EXPECT_EQ(item->text(QAccessible::Name), "24, 1 pages");
    EXPECT_TRUE(item->state().selected);
    EXPECT_EQ(item->parent()->role(), QAccessible::List);
    EXPECT_EQ(item->parent()->text(QAccessible::Name), "Files");
    QAccessibleInterface* first = item->parent()->child(0);
    EXPECT_FALSE(first->state().selected);
    first->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(first->state().selected);
}

} // namespace
} // namespace folvane
