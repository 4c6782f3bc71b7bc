#include "shell/WindowTest.h"

#include "controls/sheets/Alert.h"
#include "controls/style/focusRing.h"
#include "documents/currentFile.h"
#include "shell/BusyOverlay.h"
#include "shell/QtPanels.h"
#include "shell/ToastView.h"
#include "shell/home/HomeView.h"
#include "shell/sidebar/FileRow.h"
#include "support/await.h"

#include <QAccessible>
#include <QScrollArea>

namespace folvane {
namespace {

class Keyboard : public WindowTest {
public:
    using WindowTest::clickPage, WindowTest::grid, WindowTest::key, WindowTest::makePdf,
        WindowTest::menuEntry, WindowTest::model, WindowTest::openPages, WindowTest::panels,
        WindowTest::press, WindowTest::shown, WindowTest::waitFor, WindowTest::window;

    void SetUp() override
    {
        WindowTest::SetUp();
        window.activateWindow();
        ASSERT_TRUE(isActive(&window));
    }
    FileRow* row(int at) { return window.findChildren<FileRow*>().at(at); }
    QUrl target() const { return QUrl::fromLocalFile(folder.filePath(QStringLiteral("copy.pdf"))); }
    QAbstractButton* named(const QString& name) const
    {
        for (auto* button : window.findChildren<QAbstractButton*>())
            if (button->isVisible() && (button->accessibleName() == name || button->text() == name))
                return button;
        return nullptr;
    }
    static void tabTo(QWidget* widget) { widget->setFocus(Qt::TabFocusReason); }
    static bool isActive(const QWidget* asked)
    {
        return QTest::qWaitFor([asked] { return QApplication::activeWindow() == asked; });
    }
    /// The key goes where the keyboard is, with all that a window does on the way.
    static void type(Qt::Key key)
    {
        if (QWidget* asking = QApplication::activeModalWidget())
            ASSERT_TRUE(isActive(asking));
        ASSERT_TRUE(QApplication::focusWidget());
        QTest::keyClick(QApplication::focusWidget()->window()->windowHandle(), key);
    }
};

struct Deed {
    const char* name;
    void (*act)(Keyboard&);
};

class PagesHaveTheKeyboard : public Keyboard, public testing::WithParamInterface<Deed> {};

TEST_P(PagesHaveTheKeyboard, After)
{
    openPages(3, QStringLiteral("one"));
    openPages(3, QStringLiteral("two"));
    GetParam().act(*this);
    ASSERT_TRUE(isActive(&window));
    EXPECT_EQ(QApplication::focusWidget(), &grid());
}

INSTANTIATE_TEST_SUITE_P(
    Deeds, PagesHaveTheKeyboard,
    testing::Values(
        Deed{"OpeningByThePanelOfHome",
             [](Keyboard& on) {
                 on.model.destination = Destination();
                 on.panels.openAnswers.enqueue({on.makePdf(QStringLiteral("new.pdf"), 3)});
                 on.press(on.window.findChild<HomeView*>(), QStringLiteral("Drop PDFs or images here"));
                 ASSERT_TRUE(on.waitFor([&on] { return on.model.files.value().size() == 3; }));
             }},
        Deed{"ChoosingAnotherDocument", [](Keyboard& on) { QTest::mouseClick(on.row(0), Qt::LeftButton); }},
        Deed{"ChoosingTheShownDocument",
             [](Keyboard& on) {
                 on.tabTo(on.row(1));
                 on.type(Qt::Key_Return);
             }},
        Deed{"GoingToTheNextFile",
             [](Keyboard& on) {
                 on.tabTo(on.row(1));
                 on.menuEntry(QStringLiteral("Next File"))->trigger();
             }},
        Deed{"TurningByMouse", [](Keyboard& on) { on.press(&on.window, QStringLiteral("Rotate Right")); }},
        Deed{"DeletingByMouse",
             [](Keyboard& on) {
                 on.clickPage(0);
                 on.press(&on.window, QStringLiteral("Delete Pages"));
             }},
        Deed{"DeletingByTheButtonsKey",
             [](Keyboard& on) {
                 on.clickPage(0);
                 on.tabTo(on.named(QStringLiteral("Delete Pages")));
                 on.type(Qt::Key_Space);
             }},
        Deed{"AnError",
             [](Keyboard& on) {
                 on.key(Qt::Key_Delete);
                 on.type(Qt::Key_Return);
             }},
        Deed{"ASheet",
             [](Keyboard& on) {
                 on.press(&on.window, QStringLiteral("Split"));
                 on.type(Qt::Key_Escape);
             }},
        Deed{"AQuestion",
             [](Keyboard& on) {
                 currentFile(on.model)->isEdited = true;
                 on.press(&on.window, QStringLiteral("Close “two”"));
                 on.press(on.shown<Alert>(), QStringLiteral("Cancel"));
             }},
        Deed{"APanel",
             [](Keyboard& on) {
                 QtPanels desktops;
                 desktops.setWindow(&on.window);
                 QCoro::Task<QList<QUrl>> choosing = desktops.chooseOpen({});
                 on.type(Qt::Key_Escape);
                 EXPECT_EQ(await(std::move(choosing)), QList<QUrl>());
             }},
        Deed{"SavingByMouse",
             [](Keyboard& on) {
                 on.panels.saveAnswers.enqueue(on.target());
                 on.press(&on.window, QStringLiteral("Save As…"));
                 ASSERT_TRUE(on.waitFor([&on] { return on.model.toast.value().has_value(); }));
             }},
        Deed{"AToastThatGoesWithIt",
             [](Keyboard& on) {
                 on.model.showToast(QStringLiteral("Saved"), on.target());
                 on.tabTo(on.named(QStringLiteral("Show in Finder")));
                 on.model.toast = std::nullopt;
             }},
        Deed{"ClosingAnotherDocument",
             [](Keyboard& on) { on.press(&on.window, QStringLiteral("Close “one”")); }}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(Keyboard, ReturnEndsNoJobAndMarksNoPage)
{
    openPages(3);
    clickPage(0);
    ASSERT_TRUE(waitFor([this] { return grid().isComplete(); }));
    const QImage before = grid().viewport()->grab().toImage();
    const BusyState job{QStringLiteral("Saving…"), {}};
    model.busy = job;
    type(Qt::Key_Return);
    EXPECT_FALSE(job.task.stop_requested());
    type(Qt::Key_Tab);
    EXPECT_TRUE(window.findChild<BusyOverlay*>()->isAncestorOf(QApplication::focusWidget()));
    type(Qt::Key_Escape);
    EXPECT_TRUE(job.task.stop_requested());
    model.busy = std::nullopt;
    EXPECT_EQ(QApplication::focusWidget(), &grid());
    EXPECT_EQ(grid().viewport()->grab().toImage(), before);
}

class Replacing : public Keyboard, public testing::WithParamInterface<Qt::Key> {};

TEST_P(Replacing, IsNotWhatTheFirstKeyDoes)
{
    QtPanels asking;
    asking.setWindow(&window);
    QCoro::Task<bool> replace = asking.confirmReplace(target());
    auto* question = shown<Alert>();
    ASSERT_TRUE(question && isActive(question));
    const auto* marked = qobject_cast<Button*>(question->focusWidget());
    ASSERT_TRUE(marked);
    EXPECT_EQ(marked->text(), QStringLiteral("Cancel"));
    EXPECT_TRUE(showsFocus(*marked) && marked->isDefault());
    type(GetParam());
    EXPECT_FALSE(await(std::move(replace)));
}

INSTANTIATE_TEST_SUITE_P(Keys, Replacing,
                         testing::Values(Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space, Qt::Key_Escape));

TEST_F(Keyboard, ReturnDoesNotQuitWithChanges)
{
    openPages(2)->isEdited = true;
    window.requestQuit();
    type(Qt::Key_Return);
    EXPECT_FALSE(shown<Alert>());
    EXPECT_TRUE(window.isVisible());
}

class ListOfFiles : public Keyboard {
protected:
    static constexpr int count = 24;
    void SetUp() override
    {
        Keyboard::SetUp();
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
    tabTo(named(QStringLiteral("Home")));
    type(Qt::Key_Tab);
    EXPECT_EQ(focused(), count - 1) << "at the document that is shown";
    struct Step {
        Qt::Key key;
        int row;
    };
    for (const Step step : {Step{Qt::Key_Down, count - 1}, Step{Qt::Key_Up, count - 2}, Step{Qt::Key_Home, 0},
                            Step{Qt::Key_Up, 0}, Step{Qt::Key_Down, 1}, Step{Qt::Key_Delete, 1},
                            Step{Qt::Key_End, count - 1}, Step{Qt::Key_Home, 0}}) {
        type(step.key);
        EXPECT_EQ(focused(), step.row);
        EXPECT_TRUE(isInSight(row(step.row)));
    }
    EXPECT_EQ(model.files.value().size(), count) << "Delete closes nothing";
    type(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), named(QStringLiteral("Open…")));
    type(Qt::Key_Backtab);
    type(Qt::Key_Space);
    EXPECT_EQ(currentFile(model), model.files.value().first());
}

TEST_F(ListOfFiles, LeavesTheRowsAroundItInSight)
{
    for (const char* name : {"Home", "Open…", "Merge PDFs"})
        EXPECT_TRUE(isInSight(named(QString::fromUtf8(name)))) << name;
    QTest::keyClick(&window, Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_TRUE(isInSight(row(0))) << "after the last comes the first";
}

TEST_F(ListOfFiles, IsAListToScreenReaders)
{
    QAccessibleInterface* item = QAccessible::queryAccessibleInterface(row(count - 1));
    EXPECT_EQ(item->role(), QAccessible::ListItem);
    EXPECT_EQ(item->text(QAccessible::Name), QStringLiteral("24, 1 pages"));
    EXPECT_TRUE(item->state().selected);
    EXPECT_EQ(item->parent()->role(), QAccessible::List);
    EXPECT_EQ(item->parent()->text(QAccessible::Name), QStringLiteral("Files"));
    EXPECT_EQ(item->parent()->childCount(), count);
    QAccessibleInterface* first = item->parent()->child(0);
    EXPECT_FALSE(first->state().selected);
    first->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(first->state().selected);
}

} // namespace
} // namespace folvane
