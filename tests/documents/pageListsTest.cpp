#include "documents/pages/pageLists.h"

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

QSet<QUuid> lettersIn(const std::vector<PageItem>& pages, const QString& letters)
{
    QSet<QUuid> ids;
    for (const QChar letter : letters)
        ids.insert(pages[static_cast<size_t>(letter.unicode() - u'a')].id);
    return ids;
}

StampPlacement placement(double x, double y, double width, double rotation)
{
    return {QUuid::createUuid(), {}, QPointF(x, y), width, rotation};
}

} // namespace

TEST(Moves, KeepTheGroupTogether)
{
    const std::vector<PageItem> pages = lettered("abcdef");
    // The pages, that in front of which they go ("" for the end, "?" is not there), the new order ("" for the old one).
    using Row = std::tuple<QString, QString, QString>;
    for (const auto& [group, before, want] : QList{
             Row{"b", "e", "acdbef"}, Row{"e", "b", "aebcdf"}, Row{"f", "a", "fabcde"},
             Row{"ac", "", "bdefac"}, Row{"ace", "d", "bacedf"}, Row{"a", "?", "bcdefa"}, Row{"bd", "d", ""},
             Row{"bc", "d", ""}, Row{"ef", "", ""}, Row{"abcdef", "", ""}, Row{"", "a", ""}}) {
        std::optional<QUuid> place;
        if (!before.isEmpty())
            place = before == "?" ? QUuid::createUuid() : *lettersIn(pages, before).begin();
        const auto moved = movedGroup(pages, lettersIn(pages, group), place);
        EXPECT_EQ(moved ? order(*moved) : QString(), want) << group.toStdString();
    }
    EXPECT_FALSE(movedGroup(pages, {QUuid::createUuid()}, std::nullopt)) << "a page that is not there";
}

TEST(Turns, KeepTheStampOnThePaper)
{
    using Row = std::tuple<int, int, int, StampPlacement, StampPlacement>;
    for (const auto& [turn, quarters, wantTurn, stamp, want] : QList<Row>{
             {0, 1, 90, placement(0.25, 0.1, 0.2, 0), placement(0.9, 0.25, 0.15, 90)},
             {0, 3, 270, placement(0.25, 0.1, 0.2, 0), placement(0.1, 0.75, 0.15, 270)},
             {90, 2, 270, placement(0.25, 0.1, 0.2, 10), placement(0.75, 0.9, 0.2, 190)},
             {270, 1, 0, placement(0.5, 0.5, 0.4, 300), placement(0.5, 0.5, 0.3, 30)},
             {90, 4, 90, placement(0.3, 0.6, 0.25, 45), placement(0.3, 0.6, 0.25, 45)},
             {0, 1, 90, placement(0.5, 0.5, 0.2, -30.5), placement(0.5, 0.5, 0.15, 59.5)},
         }) {
        SCOPED_TRACE(testing::Message() << quarters << " quarters from " << turn);
        const PageItem page{QUuid::createUuid(), {}, turn, {stamp}};
        const PageItem after = turned(page, QSizeF(600, 800), quarters);
        EXPECT_EQ(after.turn, wantTurn);
        EXPECT_EQ(after.id, page.id);
        EXPECT_EQ(after.stamps[0].id, stamp.id);
        EXPECT_NEAR(after.stamps[0].center.x(), want.center.x(), 1e-12);
        EXPECT_NEAR(after.stamps[0].center.y(), want.center.y(), 1e-12);
        EXPECT_NEAR(after.stamps[0].width, want.width, 1e-12);
        EXPECT_NEAR(after.stamps[0].rotation, want.rotation, 1e-9);
    }
    const PageItem flat{{}, {}, 0, {placement(0.5, 0.5, 0.2, 0)}};
    EXPECT_DOUBLE_EQ(turned(flat, QSizeF(600, 0), 1).stamps[0].width, 120);
}

TEST(Duplicates, HaveIdsOfTheirOwn)
{
    const PageItem page{{}, {}, 90, {placement(0.1, 0.2, 0.3, 4), placement(0.5, 0.6, 0.7, 8)}};
    PageItem copy = page.duplicated();
    EXPECT_NE(std::exchange(copy.id, page.id), page.id);
    for (size_t i = 0; i < 2; ++i)
        EXPECT_NE(std::exchange(copy.stamps[i].id, page.stamps[i].id), page.stamps[i].id);
    EXPECT_EQ(copy, page);
}

} // namespace folvane
