#include "controls/Alert.h"
#include "engine/PDFEngine.h"
#include "platform/Preferences.h"
#include "platform/ScriptedPanels.h"
#include "platform/Workspace.h"
#include "platform/writeFile.h"
#include "shell/BusyOverlay.h"
#include "shell/Commands.h"
#include "shell/DocumentView.h"
#include "shell/PageGrid.h"
#include "shell/PasswordPrompt.h"
#include "shell/RootView.h"
#include "shell/ToastView.h"
#include "shell/currentFile.h"
#include "support/ManualClock.h"
#include "support/await.h"

#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QPainter>
#include <QPdfWriter>
#include <QPushButton>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

namespace folvane {
namespace {

// The real window over the real model and engine; only panels, desktop, preferences and time are stand-ins.
class Window : public testing::Test {
protected:
    void SetUp() override
    {
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    }

    QUrl makePdf(const QString& name, int pages)
    {
        QPdfWriter writer(folder.filePath(name));
        QPainter painter(&writer);
        for (int page = 1; page <= pages; ++page) {
            painter.drawText(500, 500, QString::number(page));
            if (page < pages)
                writer.newPage();
        }
        painter.end();
        return QUrl::fromLocalFile(folder.filePath(name));
    }

    QUrl makeLocked(const QString& name, const QString& password)
    {
        const QUrl plain = makePdf(QStringLiteral("plain.pdf"), 1);
        await(model.engine().open(plain));
        BuildPlan plan;
        plan.pages.emplace_back().source = {plain, 0};
        plan.password = password;
        const QByteArray bytes = await(model.engine().build(plan, std::stop_token()));
        const QUrl locked = QUrl::fromLocalFile(folder.filePath(name));
        writeFile(locked, bytes);
        return locked;
    }

    OpenFilePtr openPages(int pages)
    {
        await(model.open({makePdf(QStringLiteral("report.pdf"), pages)}));
        return currentFile(model);
    }

    PageGrid& grid() { return window.documentView().grid(); }
    QPoint pagePoint(int row) { return grid().visualRect(grid().model()->index(row, 0)).center(); }
    void clickPage(int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::mouseClick(grid().viewport(), Qt::LeftButton, modifiers, pagePoint(row));
    }
    /// The positions of the selected pages, from 0.
    QList<int> selected(const OpenFilePtr& file) const
    {
        QList<int> rows;
        for (int row = 0; row < int(file->pages.value().size()); ++row) {
            if (file->selection.value().contains(file->pages.value()[size_t(row)].id))
                rows.append(row);
        }
        return rows;
    }
    template <typename Dialog>
    Dialog* shown() const
    {
        for (Dialog* dialog : window.findChildren<Dialog*>()) {
            if (dialog->isVisible())
                return dialog;
        }
        return nullptr;
    }
    static void press(const QWidget* where, const QString& name)
    {
        for (auto* button : where->findChildren<QAbstractButton*>()) {
            if (button->text() == name || button->accessibleName() == name) {
                QTest::mouseClick(button, Qt::LeftButton);
                return;
            }
        }
        ADD_FAILURE() << "no button " << name.toStdString();
    }

    QTemporaryDir folder;
    PDFEngine engine;
    ScriptedPanels panels;
    MemoryPreferences preferences;
    ScriptedWorkspace workspace;
    ManualClock clock;
    AppModel model{Services{engine, panels, preferences, workspace, clock}};
    RootView window{model};
};

TEST_F(Window, ClicksReachTheSelectionOfTheDocument)
{
    const OpenFilePtr file = openPages(6);
    clickPage(1);
    EXPECT_EQ(selected(file), (QList{1}));
    clickPage(3, Qt::ShiftModifier);
    EXPECT_EQ(selected(file), (QList{1, 2, 3}));
    clickPage(2, Qt::ControlModifier);
    EXPECT_EQ(selected(file), (QList{1, 3}));
    QTest::mouseClick(grid().viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(2, 2));
    EXPECT_EQ(selected(file), QList<int>());
}

TEST_F(Window, KeysMoveSelectAndDelete)
{
    const OpenFilePtr file = openPages(6);
    grid().setFocus();
    QTest::keyClick(&grid(), Qt::Key_Right);
    QTest::keyClick(&grid(), Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(selected(file), (QList{1, 2}));
    QTest::keyClick(&grid(), Qt::Key_Delete);
    EXPECT_EQ(file->pages.value().size(), 4u);
    QTest::keyClick(&grid(), Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(selected(file).size(), 4);
    QTest::keyClick(&grid(), Qt::Key_Delete);
    EXPECT_EQ(file->pages.value().size(), 4u) << "a document keeps at least one page";
    ASSERT_TRUE(shown<Alert>());
    press(shown<Alert>(), QStringLiteral("OK"));
    EXPECT_EQ(model.errorMessage.value(), std::nullopt);
    QTest::keyClick(&grid(), Qt::Key_Escape);
    EXPECT_EQ(selected(file), QList<int>());
}

TEST_F(Window, ADroppedPageLandsBeforeTheOneUnderIt)
{
    const OpenFilePtr file = openPages(4);
    const QUuid last = file->pages.value()[3].id;
    QMimeData data;
    data.setText(last.toString(QUuid::WithoutBraces));
    QDragEnterEvent enter(pagePoint(1), Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(grid().viewport(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(pagePoint(1), Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(grid().viewport(), &drop);
    EXPECT_EQ(file->pages.value()[1].id, last);
    EXPECT_TRUE(file->isEdited);
}

TEST_F(Window, PicturesAreMadeOfWhatIsOnScreenAndOnlyOfThat)
{
    openPages(400);
    EXPECT_TRUE(QTest::qWaitFor([this] { return grid().isComplete(); }, 60000));
    const QImage shot = grid().viewport()->grab().toImage();
    EXPECT_EQ(shot.pixelColor(pagePoint(0)), QColor(Qt::white)) << "the middle of the first page is paper";
    grid().verticalScrollBar()->setValue(grid().verticalScrollBar()->maximum());
    EXPECT_FALSE(grid().isComplete()) << "the last pages were not drawn before they came on screen";
    EXPECT_TRUE(QTest::qWaitFor([this] { return grid().isComplete(); }, 60000));
}

TEST_F(Window, SaveAsIsOfferedForAShownDocumentWhileNothingRuns)
{
    const QAction& saveAs = window.commands().saveAs();
    EXPECT_FALSE(saveAs.isEnabled());
    const OpenFilePtr file = openPages(1);
    EXPECT_TRUE(saveAs.isEnabled());
    model.busy = BusyState{QStringLiteral("Saving…"), {}};
    EXPECT_FALSE(saveAs.isEnabled());
    EXPECT_TRUE(window.commands().closeFile().isEnabled()) << "closing does not wait for a job";
    model.busy = std::nullopt;
    EXPECT_TRUE(saveAs.isEnabled());
    model.destination = Destination();
    EXPECT_FALSE(saveAs.isEnabled());
    model.destination = Destination::file(file->id);
    EXPECT_TRUE(saveAs.isEnabled());
    model.close(file);
    EXPECT_FALSE(saveAs.isEnabled());
}

TEST_F(Window, EscapeAsksTheJobToStopAndTheOverlayStaysUntilItHas)
{
    openPages(1);
    const BusyState job{QStringLiteral("Saving…"), {}};
    model.busy = job;
    auto* overlay = window.findChild<BusyOverlay*>();
    ASSERT_TRUE(overlay->isVisible());
    ASSERT_TRUE(overlay->isAncestorOf(window.focusWidget()));
    QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
    ASSERT_TRUE(overlay->isAncestorOf(window.focusWidget())) << "the keyboard does not get below the overlay";
    QTest::keyClick(window.focusWidget(), Qt::Key_Escape);
    EXPECT_TRUE(job.task.stop_requested());
    EXPECT_TRUE(overlay->isVisible());
    model.busy = std::nullopt;
    EXPECT_FALSE(overlay->isVisible());
}

TEST_F(Window, SavingShowsAToastThatLeadsToTheFile)
{
    openPages(2);
    const QUrl target = QUrl::fromLocalFile(folder.filePath(QStringLiteral("copy.pdf")));
    panels.saveAnswers.enqueue(target);
    QTest::keyClick(&window, Qt::Key_S, Qt::ControlModifier);
    ASSERT_TRUE(QTest::qWaitFor([this] { return model.toast.value().has_value(); }, 60000));
    auto* toast = window.findChild<ToastView*>();
    ASSERT_TRUE(toast->isVisible());
    press(toast, QStringLiteral("Show in Finder"));
    EXPECT_EQ(workspace.revealed, (QList{target}));
    EXPECT_EQ(await(engine.open(target)), OpenResult::opened(2));
}

enum class Dismissal { Escape, Cancel, Close };

class Prompt : public Window, public testing::WithParamInterface<Dismissal> {};

TEST_P(Prompt, DismissedInAnyWayTheOpeningGoesOnWithTheNextFile)
{
    const QUrl locked = makeLocked(QStringLiteral("locked.pdf"), QStringLiteral("secret"));
    const QUrl open = makePdf(QStringLiteral("open.pdf"), 1);
    QCoro::Task<> opening = model.open({locked, open});
    ASSERT_TRUE(QTest::qWaitFor([this] { return shown<PasswordPrompt>() != nullptr; }, 60000));
    auto* prompt = shown<PasswordPrompt>();
    switch (GetParam()) {
    case Dismissal::Escape: QTest::keyClick(prompt, Qt::Key_Escape); break;
    case Dismissal::Cancel: press(prompt, QStringLiteral("Cancel")); break;
    case Dismissal::Close: prompt->close(); break;
    }
    await(std::move(opening));
    ASSERT_EQ(model.files.value().size(), 1);
    EXPECT_EQ(model.files.value().first()->url, open);
    EXPECT_EQ(model.errorMessage.value(), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(Ways, Prompt,
                         testing::Values(Dismissal::Escape, Dismissal::Cancel, Dismissal::Close));

TEST_F(Window, AWrongPasswordAsksAgainWithAnEmptyField)
{
    const QUrl locked = makeLocked(QStringLiteral("locked.pdf"), QStringLiteral("secret"));
    QCoro::Task<> opening = model.open({locked});
    ASSERT_TRUE(QTest::qWaitFor([this] { return shown<PasswordPrompt>() != nullptr; }, 60000));
    const QUuid first = model.passwordRequest.value()->id;
    auto* field = shown<PasswordPrompt>()->findChild<QLineEdit*>();
    EXPECT_EQ(field->echoMode(), QLineEdit::Password);
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(model.passwordRequest.value()->id, first) << "Return in an empty field does nothing";
    QTest::keyClicks(field, QStringLiteral("wrong"));
    QTest::keyClick(field, Qt::Key_Return);
    ASSERT_TRUE(QTest::qWaitFor(
        [this, first] { return model.passwordRequest.value() && model.passwordRequest.value()->id != first; },
        60000));
    EXPECT_TRUE(model.passwordRequest.value()->wasWrong);
    field = shown<PasswordPrompt>()->findChild<QLineEdit*>();
    EXPECT_EQ(field->text(), QString());
    QTest::keyClicks(field, QStringLiteral("secret"));
    press(shown<PasswordPrompt>(), QStringLiteral("Open"));
    await(std::move(opening));
    EXPECT_TRUE(currentFile(model));
    EXPECT_FALSE(shown<PasswordPrompt>());
}

TEST_F(Window, ClosingAnEditedDocumentAsks)
{
    const OpenFilePtr file = openPages(2);
    clickPage(0);
    QTest::keyClick(&grid(), Qt::Key_Delete);
    QTest::keyClick(&window, Qt::Key_W, Qt::ControlModifier);
    ASSERT_TRUE(shown<Alert>());
    EXPECT_EQ(shown<Alert>()->windowTitle(), QStringLiteral("Save changes to “report”?"));
    press(shown<Alert>(), QStringLiteral("Cancel"));
    EXPECT_EQ(model.files.value().size(), 1);
    EXPECT_EQ(model.closingFile.value(), nullptr);

    QTest::keyClick(&window, Qt::Key_W, Qt::ControlModifier);
    press(shown<Alert>(), QStringLiteral("Save As…"));
    EXPECT_EQ(panels.asked.size(), 1);
    EXPECT_EQ(model.files.value().size(), 1) << "saving from the question does not close";

    press(window.centralWidget(), QStringLiteral("Close “report”"));
    press(shown<Alert>(), QStringLiteral("Don't Save"));
    QCoreApplication::processEvents();
    EXPECT_TRUE(model.files.value().isEmpty());
    EXPECT_EQ(window.windowTitle(), QStringLiteral("Folvane"));
}

TEST_F(Window, ASecondErrorReplacesTheTextOfTheFirst)
{
    model.errorMessage = QStringLiteral("One.");
    auto* alert = shown<Alert>();
    model.errorMessage = QStringLiteral("Two.");
    EXPECT_EQ(shown<Alert>(), alert);
    EXPECT_EQ(alert->accessibleDescription(), QStringLiteral("Two."));
    QTest::keyClick(alert, Qt::Key_Escape);
    EXPECT_EQ(model.errorMessage.value(), std::nullopt);
    EXPECT_FALSE(shown<Alert>());
}

TEST_F(Window, ClosingTheWindowNeverTakesUnsavedChangesAlong)
{
    const OpenFilePtr file = openPages(2);
    clickPage(0);
    QTest::keyClick(&grid(), Qt::Key_Delete);
    EXPECT_FALSE(window.close());
    EXPECT_TRUE(window.isMinimized());
    EXPECT_FALSE(shown<Alert>()) << "only Quit asks";
    window.requestQuit();
    ASSERT_TRUE(shown<Alert>());
    press(shown<Alert>(), QStringLiteral("Cancel"));
    EXPECT_EQ(model.files.value(), (QList{file}));
}

TEST_F(Window, EveryControlHasANameForScreenReaders)
{
    openPages(2);
    for (const auto* button : window.findChildren<QAbstractButton*>()) {
        if (button->objectName().startsWith(QStringLiteral("qt_")))
            continue;
        EXPECT_FALSE(button->text().isEmpty() && button->accessibleName().isEmpty())
            << button->metaObject()->className() << " in "
            << button->parentWidget()->metaObject()->className();
    }
}

} // namespace
} // namespace folvane
