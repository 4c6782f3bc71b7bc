#include "shell/pageGrid/pageSelection.h"

#include <QList>

#include <gtest/gtest.h>

namespace folvane {
namespace {

QUuid page(char letter)
{
    return QUuid(uint(letter), 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
}

QSet<QUuid> pages(const std::string& letters)
{
    QSet<QUuid> ids;
    for (const char letter : letters)
        ids.insert(page(letter));
    return ids;
}

constexpr auto plain = Qt::NoModifier;
constexpr auto ctrl = Qt::ControlModifier;
constexpr auto shift = Qt::ShiftModifier;

TEST(PageSelection, FollowsClicks)
{
    struct Click {
        const char* selected;
        char anchor; ///< 0: none
        char clicked;
        Qt::KeyboardModifiers modifiers;
        const char* wanted;
        char wantedAnchor;
    };
    const QList<QUuid> order{page('a'), page('b'), page('c'), page('d'), page('e')};
    for (const Click& row : {
             Click{"ab", 'a', 'd', plain, "d", 'd'}, Click{"ab", 'a', 'b', plain, "b", 'b'},
             Click{"a", 'a', 'd', ctrl, "ad", 'd'}, Click{"ad", 'a', 'd', ctrl, "a", 'd'},
             Click{"a", 'a', 'd', ctrl | shift, "ad", 'd'}, Click{"b", 'b', 'd', shift, "bcd", 'b'},
             Click{"d", 'd', 'b', shift, "bcd", 'd'},
             Click{"bcd", 'b', 'a', shift, "ab", 'b'}, // measured again from the same page
             Click{"d", 'd', 'e', shift, "de", 'd'}, Click{"c", 'c', 'c', shift, "c", 'c'},
             Click{"a", 0, 'd', shift, "d", 'd'},
             Click{"a", 'x', 'd', shift, "d", 'd'}, // from a page that is gone
         }) {
        const std::optional<QUuid> anchor = row.anchor ? std::optional(page(row.anchor)) : std::nullopt;
        const PageSelection after =
            selectionAfterClick({pages(row.selected), anchor}, order, page(row.clicked), row.modifiers);
        EXPECT_EQ(after.pages, pages(row.wanted)) << row.selected << " to " << row.wanted;
        EXPECT_EQ(after.anchor, page(row.wantedAnchor)) << row.selected << " to " << row.wanted;
    }
}

} // namespace
} // namespace folvane
