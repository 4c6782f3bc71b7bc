#include "shell/WindowTest.h"

#include "controls/Button.h"
#include "shell/BusyOverlay.h"
#include "shell/DocumentBar.h"
#include "shell/ToastView.h"
#include "shell/sidebar/SidebarView.h"
#include "support/await.h"

#include <QAction>
#include <QMimeData>
#include <QScrollBar>
#include <QSplitter>

namespace folvane {
namespace {

using InWindow = WindowTest;

TEST_F(InWindow, SaveAsIsOfferedForAShownDocumentWhileNothingRuns)
{
    const QAction& saveAs = *menuEntry(QStringLiteral("Save As…"));
    EXPECT_FALSE(saveAs.isEnabled());
    const OpenFilePtr file = openPages(1);
    EXPECT_TRUE(saveAs.isEnabled());
    model.busy = BusyState{QStringLiteral("Saving…"), {}};
    EXPECT_FALSE(saveAs.isEnabled());
    EXPECT_TRUE(menuEntry(QStringLiteral("Close File"))->isEnabled()) << "closing does not wait for a job";
    model.busy = std::nullopt;
    EXPECT_TRUE(saveAs.isEnabled());
    model.destination = Destination();
    EXPECT_FALSE(saveAs.isEnabled());
    model.destination = Destination::file(file->id);
    EXPECT_TRUE(saveAs.isEnabled());
    model.close(file);
    EXPECT_FALSE(saveAs.isEnabled());
}

TEST_F(InWindow, EscapeAsksTheJobToStopAndTheOverlayStaysUntilItHas)
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

TEST_F(InWindow, AWideSidebarTakesTheTitlesOfTheTools)
{
    openPages(1);
    const Button* split = nullptr;
    for (const Button* button : window.findChildren<Button*>())
        split = button->isVisible() && button->text() == QStringLiteral("Split") ? button : split;
    ASSERT_TRUE(split);
    const int withTitle = split->frame().width();
    window.resize(window.minimumSize());
    const auto* sidebar = window.findChild<SidebarView*>();
    window.findChild<QSplitter*>()->setSizes(
        {sidebar->maximumWidth(), window.width() - sidebar->maximumWidth()});
    QCoreApplication::processEvents();
    EXPECT_EQ(sidebar->width(), sidebar->maximumWidth());
    EXPECT_EQ(window.size(), window.minimumSize());
    EXPECT_EQ(window.centralWidget()->size(), QSize(1000, 660)) << "below the menu bar";
    EXPECT_LT(split->frame().width(), withTitle);
    const auto* bar = window.findChild<DocumentBar*>();
    const auto* save = bar->findChildren<Button*>().last();
    EXPECT_LE(save->mapTo(bar, save->frame().bottomRight()).x(), bar->width());
}

TEST_F(InWindow, SavingShowsAToastThatLeadsToTheFile)
{
    openPages(2);
    const QUrl target = QUrl::fromLocalFile(folder.filePath(QStringLiteral("copy.pdf")));
    panels.saveAnswers.enqueue(target);
    QTest::keyClick(&window, Qt::Key_S, Qt::ControlModifier);
    ASSERT_TRUE(waitFor([this] { return model.toast.value().has_value(); }));
    auto* toast = window.findChild<ToastView*>();
    ASSERT_TRUE(toast->isVisible());
    press(toast, QStringLiteral("Show in Finder"));
    EXPECT_EQ(workspace.revealed, (QList{target}));
    EXPECT_EQ(await(engine.open(target)), OpenResult::opened(2));
}

TEST_F(InWindow, ScrollingThroughAllPagesNeverQueuesMoreThanAHandful)
{
    const OpenFilePtr file = openPages(400);
    const auto underWay = [&] {
        int count = 0;
        for (const PageItem& page : file->pages.value())
            count += model.thumbnails().isLoading({page.source, page.turn, 360}) ? 1 : 0;
        return count;
    };
    QScrollBar* bar = grid().verticalScrollBar();
    for (int place = 0; place <= bar->maximum(); place += bar->pageStep()) {
        bar->setValue(place);
        ASSERT_LE(underWay(), PagePictures::mostUnderWay);
    }
    EXPECT_TRUE(waitFor([this] { return grid().isComplete(); }))
        << "the pages on screen in the end have theirs";
    int made = 0;
    for (const PageItem& page : file->pages.value())
        made += model.thumbnails().contains({page.source, page.turn, 360}) ? 1 : 0;
    EXPECT_LT(made, 60) << "pages that were only passed have none";
}

TEST_F(InWindow, APictureThatWasDrivenOutWhileItsPageShowsIsStillThere)
{
    const OpenFilePtr file = openPages(2);
    ASSERT_TRUE(waitFor([this] { return grid().isComplete(); }));
    for (int number = 0; number < Thumbnails::mostInAll; ++number)
        await(model.thumbnails().load(
            {file->pages.value()[0].source, number / 400 * 90 + 90, number % 400 + 1}));
    EXPECT_FALSE(model.thumbnails().contains({file->pages.value()[0].source, 0, 360}));
    EXPECT_TRUE(waitFor([this] { return grid().isComplete(); }));
    EXPECT_EQ(grid().viewport()->grab().toImage().pixelColor(pagePoint(0)), QColor(Qt::white));
}

TEST_F(InWindow, PicturesAreMadeOfWhatIsOnScreenAndOnlyOfThat)
{
    openPages(400);
    EXPECT_TRUE(waitFor([this] { return grid().isComplete(); }));
    const QImage shot = grid().viewport()->grab().toImage();
    EXPECT_EQ(shot.pixelColor(pagePoint(0)), QColor(Qt::white)) << "the middle of the first page is paper";
    grid().verticalScrollBar()->setValue(grid().verticalScrollBar()->maximum());
    EXPECT_FALSE(grid().isComplete()) << "the last pages were not drawn before they came on screen";
    EXPECT_TRUE(waitFor([this] { return grid().isComplete(); }));
}

} // namespace
} // namespace folvane
