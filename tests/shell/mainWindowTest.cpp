#include "shell/WindowTest.h"

#include "controls/Button.h"
#include "shell/DocumentBar.h"
#include "shell/sidebar/SidebarView.h"
#include "support/await.h"

#include <QAction>
#include <QScrollBar>
#include <QSplitter>

namespace folvane {
namespace {

using InWindow = WindowTest;

TEST_F(InWindow, SaveAsIsOfferedForAShownDocumentWhileNothingRuns)
{
    const QAction& saveAs = *menuEntry("Save As…");
    EXPECT_FALSE(saveAs.isEnabled());
    const OpenFilePtr file = openPages(1);
    EXPECT_TRUE(saveAs.isEnabled());
    model.busy = BusyState{"Saving…", {}};
    EXPECT_FALSE(saveAs.isEnabled());
    EXPECT_TRUE(menuEntry("Close File")->isEnabled()) << "closing does not wait for a job";
    model.busy = std::nullopt;
    EXPECT_TRUE(saveAs.isEnabled());
    model.destination = Destination();
    EXPECT_FALSE(saveAs.isEnabled());
}

TEST_F(InWindow, AWideSidebarTakesTheTitlesOfTheToolsUntilThereIsRoomAgain)
{
    openPages(1);
    const auto* split = qobject_cast<Button*>(button("Split"));
    const int withTitle = split->frame().width();
    const QSize wide = window.size();
    window.resize(window.minimumSize());
    const int widest = window.findChild<SidebarView*>()->maximumWidth();
    window.findChild<QSplitter*>()->setSizes({widest, window.width() - widest});
    QCoreApplication::processEvents();
    EXPECT_EQ(window.size(), window.minimumSize());
    EXPECT_EQ(window.centralWidget()->size(), QSize(1000, 660)) << "below the menu bar";
    EXPECT_LT(split->frame().width(), withTitle);
    EXPECT_EQ(split->text(), "Split") << "for screen readers";
    const auto* bar = window.findChild<DocumentBar*>();
    const auto* save = bar->findChildren<Button*>().last();
    EXPECT_LE(save->mapTo(bar, save->frame().bottomRight()).x(), bar->width());
    window.resize(wide);
    QCoreApplication::processEvents();
    EXPECT_EQ(split->frame().width(), withTitle);
}

TEST_F(InWindow, PicturesAreMadeOfWhatIsOnScreenAndNeverMoreThanAHandfulAtOnce)
{
    const OpenFilePtr file = openPages(400);
    const auto count = [&](bool (Thumbnails::*is)(const Thumbnails::Key&) const) {
        return std::ranges::count_if(file->pages.value(), [&](const PageItem& page) {
            return (model.thumbnails().*is)({page.source, page.turn, 360});
        });
    };
    QScrollBar* bar = grid().verticalScrollBar();
    for (int place = 0; place <= bar->maximum(); place += bar->pageStep()) {
        bar->setValue(place);
        ASSERT_LE(count(&Thumbnails::isLoading), PagePictures::mostUnderWay);
    }
    EXPECT_FALSE(grid().isComplete()) << "the last pages were not drawn before they came on screen";
    EXPECT_TRUE(waitFor([this] { return grid().isComplete(); }));
    EXPECT_LT(count(&Thumbnails::contains), 60) << "pages that were only passed have none";
}

TEST_F(InWindow, APictureThatWasDrivenOutWhileItsPageShowsIsStillThere)
{
    const OpenFilePtr file = openPages(2);
    ASSERT_TRUE(waitFor([this] { return grid().isComplete(); }));
    const QImage before = grid().viewport()->grab().toImage();
    const PageSource source = file->pages.value()[0].source;
    for (int number = 0; number < Thumbnails::mostInAll; ++number)
        await(model.thumbnails().load({source, number / 400 * 90 + 90, number % 400 + 1}));
    EXPECT_FALSE(model.thumbnails().contains({source, 0, 360}));
    EXPECT_TRUE(waitFor([this] { return grid().isComplete(); }));
    EXPECT_EQ(grid().viewport()->grab().toImage(), before);
}

} // namespace
} // namespace folvane
