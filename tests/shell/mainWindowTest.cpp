#include "shell/WindowTest.h"

#include <QScrollBar>

namespace folvane {
namespace {

using InWindow = WindowTest;

TEST_F(InWindow, SaveAsIsThereForAShownDocumentWhileNothingRuns)
{
    const auto asksForAPlace = [this] {
        const qsizetype before = panels.asked.size();
        hand.key(Qt::Key_S, Qt::ControlModifier);
        return panels.asked.size() > before;
    };
    EXPECT_FALSE(asksForAPlace());
    openPages(1);
    EXPECT_TRUE(asksForAPlace());
    model.busy = BusyState{"Saving…", {}};
    EXPECT_FALSE(asksForAPlace());
    model.busy = std::nullopt;
    EXPECT_TRUE(asksForAPlace());
    model.destination = Destination();
    EXPECT_FALSE(asksForAPlace());
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
