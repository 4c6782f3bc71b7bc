#include "shell/WindowTest.h"

#include "controls/sheets/Alert.h"

#include <QContextMenuEvent>
#include <QMenu>

namespace folvane {
namespace {

struct Click {
    int page; // -1: on the empty ground
    Qt::KeyboardModifiers with = Qt::NoModifier;
};

struct ClicksCase {
    const char* name;
    QList<Click> clicks;
    QList<int> selected;
};

class Clicks : public WindowTest, public testing::WithParamInterface<ClicksCase> {};

TEST_P(Clicks, Select)
{
    const OpenFilePtr file = openPages(6);
    for (const Click& click : GetParam().clicks) {
        if (click.page < 0)
            QTest::mouseClick(grid().viewport(), Qt::LeftButton, click.with, QPoint(2, 2));
        else
            clickPage(click.page, click.with);
    }
    EXPECT_EQ(selected(file), GetParam().selected);
}

constexpr auto ctrl = Qt::ControlModifier;
constexpr auto shift = Qt::ShiftModifier;

INSTANTIATE_TEST_SUITE_P(
    Rows, Clicks,
    testing::Values(ClicksCase{"OneAlone", {{1}, {3}}, {3}}, ClicksCase{"CtrlAdds", {{1}, {3, ctrl}}, {1, 3}},
                    ClicksCase{"CtrlTakesOut", {{1}, {3, ctrl}, {1, ctrl}}, {3}},
                    ClicksCase{"ShiftSelectsBothEnds", {{1}, {4, shift}}, {1, 2, 3, 4}},
                    ClicksCase{"ShiftBackwards", {{4}, {2, shift}}, {2, 3, 4}},
                    ClicksCase{"TheAnchorStays", {{2}, {4, shift}, {1, shift}}, {1, 2}},
                    ClicksCase{"CtrlMovesTheAnchor", {{0}, {3, ctrl}, {5, shift}}, {3, 4, 5}},
                    ClicksCase{"CtrlBeatsShift", {{1}, {4, ctrl | shift}}, {1, 4}},
                    ClicksCase{"ShiftWithoutAnAnchor", {{3, shift}}, {3}},
                    ClicksCase{"TheGroundSelectsNothing", {{1}, {-1}}, {}},
                    ClicksCase{"TheGroundKeepsTheAnchor", {{1}, {-1}, {3, shift}}, {1, 2, 3}}),
    [](const auto& row) { return std::string(row.param.name); });

using Selection = WindowTest;

TEST_F(Selection, AnAnchorOfADeletedPageNoLongerCounts)
{
    const OpenFilePtr file = openPages(6);
    clickPage(1);
    key(Qt::Key_Delete);
    clickPage(3, shift);
    EXPECT_EQ(selected(file), (QList{3}));
}

TEST_F(Selection, TheAnchorSurvivesASwitchOfDocumentsAndEndsWithTheView)
{
    const OpenFilePtr first = openPages(6, QStringLiteral("first"));
    clickPage(1);
    const OpenFilePtr second = openPages(6, QStringLiteral("second"));
    clickPage(3, shift);
    EXPECT_EQ(selected(second), (QList{3})) << "the anchor is a page of the other document";
    model.destination = Destination::file(first->id);
    EXPECT_EQ(selected(first), (QList{1})) << "the selection belongs to the document";
    model.destination = Destination::file(second->id);
    clickPage(5, shift);
    EXPECT_EQ(selected(second), (QList{3, 4, 5}))
        << "the fallback made a new anchor, which came back with it";

    model.destination = Destination();
    model.destination = Destination::file(second->id);
    clickPage(1, shift);
    EXPECT_EQ(selected(second), (QList{1})) << "another kind of place in between drops the anchor";
}

TEST_F(Selection, AContextClickSelectsNothingAndItsCommandsTakeThePageOrTheSelection)
{
    const OpenFilePtr file = openPages(4);
    clickPage(0);
    clickPage(1, ctrl);
    const auto openMenu = [this](int row) {
        QTest::mouseClick(grid().viewport(), Qt::RightButton, Qt::NoModifier, pagePoint(row));
        QContextMenuEvent event(QContextMenuEvent::Mouse, pagePoint(row),
                                grid().viewport()->mapToGlobal(pagePoint(row)));
        QCoreApplication::sendEvent(grid().viewport(), &event);
        return shown<QMenu>();
    };
    const auto choose = [](QMenu* menu, const QString& title) {
        for (QAction* action : menu->actions()) {
            if (action->text().remove(u'&') == title)
                action->trigger();
        }
        menu->close();
    };
    const auto turns = [&file] {
        QList<int> turns;
        for (const PageItem& page : file->pages.value())
            turns.append(page.turn);
        return turns;
    };
    QMenu* menu = openMenu(3);
    ASSERT_TRUE(menu);
    EXPECT_EQ(selected(file), (QList{0, 1}));
    choose(menu, QStringLiteral("Rotate Right"));
    EXPECT_TRUE(waitFor([&] { return turns() == QList{0, 0, 0, 90}; })) << "a page outside stands alone";
    choose(openMenu(1), QStringLiteral("Rotate Left"));
    EXPECT_TRUE(waitFor([&] { return turns() == QList{270, 270, 0, 90}; }))
        << "one of the selection takes all";
    choose(openMenu(2), QStringLiteral("Extract…"));
    EXPECT_EQ(selected(file), (QList{2})) << "extracting selects what it extracts";
    choose(openMenu(3), QStringLiteral("Delete"));
    EXPECT_EQ(file->pages.value().size(), 3u);
}

TEST_F(Selection, KeysWalkSelectAndDelete)
{
    const OpenFilePtr file = openPages(6);
    grid().setFocus();
    key(Qt::Key_Right);
    key(Qt::Key_Right, shift);
    EXPECT_EQ(selected(file), (QList{1, 2}));
    key(Qt::Key_Right, ctrl);
    key(Qt::Key_Right, ctrl);
    key(Qt::Key_Space);
    EXPECT_EQ(selected(file), (QList{1, 2, 4})) << "without a mouse, pages that do not adjoin";
    key(Qt::Key_Delete);
    EXPECT_EQ(file->pages.value().size(), 3u);
    EXPECT_EQ(selected(file), QList<int>());
    key(Qt::Key_A, ctrl);
    EXPECT_EQ(selected(file).size(), 3);
    key(Qt::Key_Escape);
    EXPECT_EQ(selected(file), QList<int>());
}

TEST_F(Selection, DeletingNothingOrEverythingIsRefused)
{
    const OpenFilePtr file = openPages(3);
    for (const bool everything : {false, true}) {
        if (everything)
            key(Qt::Key_A, ctrl);
        key(Qt::Key_Delete);
        auto* alert = shown<Alert>();
        ASSERT_TRUE(alert);
        EXPECT_EQ(alert->accessibleDescription(),
                  QStringLiteral("A file needs at least one page. To get rid of it, close the file."));
        press(alert, QStringLiteral("OK"));
        EXPECT_EQ(file->pages.value().size(), 3u);
    }
    EXPECT_FALSE(file->isEdited);
}

} // namespace
} // namespace folvane
