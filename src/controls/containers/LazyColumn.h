#pragma once

#include <QAbstractScrollArea>
#include <QHash>
#include <QList>
#include <QSet>
#include <QUuid>

#include <functional>

namespace folvane {

/// A page that scrolls: a header, and below it a column of items, however many. An item is made when it comes near the screen and
/// goes when it has left it, unless it has the keyboard; what can be seen keeps its place meanwhile. The Tab key goes through the
/// items one after the other; so do the arrow keys, which go from item to item where an item itself has the keyboard.
class LazyColumn : public QAbstractScrollArea {
    Q_OBJECT

public:
    /// In pixels. The page is as wide as it may be, in the middle of what there is.
    struct Measures {
        int widestPage;
        int padding; ///< around the page
        int spacing;
        int usualHeight; ///< of an item that was not made yet
    };
    /// The item's height may depend on its width. It takes the keyboard, or something in it does.
    using MakeItem = std::function<QWidget*(const QUuid&)>;

    LazyColumn(const Measures& measures, MakeItem makeItem, QWidget* parent = nullptr);
    ~LazyColumn() override;

    /// Takes it, once.
    void setHeader(QWidget* header);
    void setItems(const QList<QUuid>& items);
    void scrollToTop();

    QSize minimumSizeHint() const override { return {}; }

protected:
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// The first item on screen, and how far below the upper edge it begins. None while the header is there.
    struct Anchor {
        QUuid item;
        int distance;
    };
    /// The items from `first` on, before `end`.
    struct Range {
        qsizetype first;
        qsizetype end;
    };

    int scroll() const;
    int pageWidth() const;
    int heightOf(QWidget& widget) const;
    int topOf(qsizetype item) const { return m_tops[size_t(item)]; }
    int bottomOf(qsizetype item) const { return topOf(item + 1) - m_measures.spacing; }
    /// The first item that ends below this place of the page; their number when there is none.
    qsizetype itemAt(int y) const;
    Anchor anchor() const;

    void arrange(const Anchor& anchor);
    void measureHeader();
    void findTops();
    void scrollTo(const Anchor& anchor);
    Range rangeNearScreen() const;
    bool make(Range range);
    void discardBeyond(Range range);
    void discardAllBut(const QSet<QUuid>& kept);
    void discard(const QUuid& item);
    void chainTabs();
    void placeAll() const;
    void place(QWidget& widget, int top, int height) const;

    void passKeyboardOn(qsizetype from);
    void follow(QWidget* focused);
    void reveal(int top, int bottom);
    qsizetype focusedItem() const;
    void goTo(qsizetype item);
    void goDown(qsizetype from);
    void goUp(qsizetype from);
    void turnPage(int direction);

    const Measures m_measures;
    const MakeItem m_makeItem;
    QWidget* m_header = nullptr;
    int m_headerHeight = 0;
    QList<QUuid> m_items;
    QHash<QUuid, QWidget*> m_made;
    QList<QUuid> m_chained;      ///< those that the Tab key goes through, in order
    QHash<QUuid, int> m_heights; ///< of those that were made, at this width
    int m_width = 0;
    std::vector<int> m_tops; ///< of all items on the page, and where one more would begin
    bool m_isArranging = false;
};

} // namespace folvane
