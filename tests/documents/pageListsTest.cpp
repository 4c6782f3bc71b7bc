#include "documents/pageLists.h"

#include <gtest/gtest.h>

namespace folvane {

namespace {

std::vector<PageItem> lettered(const QString& letters)
{
    return pagesOf(QUrl("file:///source.pdf"), static_cast<int>(letters.size()));
}

/// The order as letters, each page bearing the letter of its place in the source.
QString order(const std::vector<PageItem>& pages)
{
    QString letters;
    for (const PageItem& page : pages)
        letters += QChar(u'a' + page.source.index);
    return letters;
}

QSet<QUuid> idsOf(const std::vector<PageItem>& pages, const QString& letters)
{
    QSet<QUuid> ids;
    for (const QChar letter : letters)
        ids.insert(pages[static_cast<size_t>(letter.unicode() - u'a')].id);
    return ids;
}

struct MoveCase {
    const char* name;
    QString group;
    QString before; // "" for the end, "?" for a page that is not there
    QString want;   // "" for no change
};

struct TurnCase {
    const char* name;
    int turn;
    int quarters;
    int wantTurn;
    StampPlacement stamp;
    StampPlacement want;
};

StampPlacement placement(double x, double y, double width, double rotation)
{
    StampPlacement stamp;
    stamp.center = QPointF(x, y);
    stamp.width = width;
    stamp.rotation = rotation;
    return stamp;
}

void expectSame(const StampPlacement& stamp, const StampPlacement& want)
{
    EXPECT_NEAR(stamp.center.x(), want.center.x(), 1e-12);
    EXPECT_NEAR(stamp.center.y(), want.center.y(), 1e-12);
    EXPECT_NEAR(stamp.width, want.width, 1e-12);
    EXPECT_NEAR(stamp.rotation, want.rotation, 1e-9);
}

const auto named = [](const auto& row) { return std::string(row.param.name); };

} // namespace

class Moves : public testing::TestWithParam<MoveCase> {};

TEST_P(Moves, KeepTheGroupTogether)
{
    const std::vector<PageItem> pages = lettered("abcdef");
    std::optional<QUuid> before;
    if (GetParam().before == "?")
        before = QUuid::createUuid();
    else if (!GetParam().before.isEmpty())
        before = *idsOf(pages, GetParam().before).begin();
    const auto moved = movedGroup(pages, idsOf(pages, GetParam().group), before);
    EXPECT_EQ(moved ? order(*moved) : QString(), GetParam().want);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, Moves,
    testing::Values(MoveCase{"Forward", "b", "e", "acdbef"}, MoveCase{"Back", "e", "b", "aebcdf"},
                    MoveCase{"ToTheStart", "f", "a", "fabcde"}, MoveCase{"ToTheEnd", "ac", "", "bdefac"},
                    MoveCase{"ClosesGaps", "ace", "d", "bacedf"},
                    MoveCase{"UnknownPlaceIsTheEnd", "a", "?", "bcdefa"},
                    MoveCase{"OntoAMember", "bd", "d", ""}, MoveCase{"AlreadyThere", "bc", "d", ""},
                    MoveCase{"AlreadyAtTheEnd", "ef", "", ""}, MoveCase{"AllPages", "abcdef", "", ""},
                    MoveCase{"NoGroup", "", "a", ""}),
    named);

TEST(Moves, IgnorePagesThatAreNotInTheList)
{
    EXPECT_FALSE(movedGroup(lettered("ab"), {QUuid::createUuid()}, std::nullopt));
}

class Turns : public testing::TestWithParam<TurnCase> {};

TEST_P(Turns, KeepTheStampOnThePaper)
{
    PageItem page;
    page.turn = GetParam().turn;
    page.stamps = {GetParam().stamp};
    const PageItem after = turned(page, QSizeF(600, 800), GetParam().quarters);
    EXPECT_EQ(after.turn, GetParam().wantTurn);
    EXPECT_EQ(after.id, page.id);
    EXPECT_EQ(after.stamps[0].id, page.stamps[0].id);
    expectSame(after.stamps[0], GetParam().want);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, Turns,
    testing::Values(
        TurnCase{"Right", 0, 1, 90, placement(0.25, 0.1, 0.2, 0), placement(0.9, 0.25, 0.15, 90)},
        TurnCase{"Left", 0, 3, 270, placement(0.25, 0.1, 0.2, 0), placement(0.1, 0.75, 0.15, 270)},
        TurnCase{"UpsideDown", 90, 2, 270, placement(0.25, 0.1, 0.2, 10), placement(0.75, 0.9, 0.2, 190)},
        TurnCase{"PastTheRound", 270, 1, 0, placement(0.5, 0.5, 0.4, 300), placement(0.5, 0.5, 0.3, 30)},
        TurnCase{"WholeRound", 90, 4, 90, placement(0.3, 0.6, 0.25, 45), placement(0.3, 0.6, 0.25, 45)},
        TurnCase{"NegativeRotation", 0, 1, 90, placement(0.5, 0.5, 0.2, -30.5),
                 placement(0.5, 0.5, 0.15, 59.5)}),
    named);

TEST(Turns, OfAFlatPageDividesByOne)
{
    PageItem page;
    page.stamps = {placement(0.5, 0.5, 0.2, 0)};
    EXPECT_DOUBLE_EQ(turned(page, QSizeF(600, 0), 1).stamps[0].width, 120);
}

TEST(Insertion, GoesBehindTheLastSelectedPage)
{
    const std::vector<PageItem> pages = lettered("abcdef");
    EXPECT_EQ(insertionIndex(pages, idsOf(pages, "be")), 5u);
    EXPECT_EQ(insertionIndex(pages, {}), 6u);
    EXPECT_EQ(insertionIndex(pages, {QUuid::createUuid()}), 6u);
}

TEST(Duplicates, HaveIdsOfTheirOwn)
{
    PageItem page = lettered("a").front();
    page.turn = 90;
    page.stamps = {placement(0.1, 0.2, 0.3, 4), placement(0.5, 0.6, 0.7, 8)};
    PageItem copy = page.duplicated();
    EXPECT_NE(copy.id, page.id);
    copy.id = page.id;
    for (size_t i = 0; i < 2; ++i) {
        EXPECT_NE(copy.stamps[i].id, page.stamps[i].id);
        copy.stamps[i].id = page.stamps[i].id;
    }
    EXPECT_EQ(copy, page);
}

} // namespace folvane
