#include "controls/containers/LazyColumn.h"
#include "controls/Button.h"
#include "controls/layouts.h"
#include "support/printers.h"

#include <QScrollBar>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>

namespace folvane {

namespace {

/// Items of different heights, each with two stops of the Tab key; the header has one.
class LazyColumns : public testing::Test {
protected:
    LazyColumns()
    {
        auto* header = new QWidget;
        makeColumn(header, {}, 0)->addWidget(new Button(Button::Kind::Secondary, "Top", header));
        column.setHeader(header);
        for (int i = 0; i < 500; ++i)
            items.append(QUuid::createUuid());
        column.resize(400, 600);
        column.show();
        column.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&column));
        column.setItems(items);
    }

    QWidget* makeItem(const QUuid& item)
    {
        auto* card = new QWidget;
        const QString number = QString::number(items.indexOf(item));
        card->setObjectName(number);
        card->setFocusPolicy(Qt::TabFocus);
        makeColumn(card, QMargins(0, 0, 0, 20 + 30 * int(items.indexOf(item) % 4) + more), 0)
            ->addWidget(new Button(Button::Kind::Secondary, number, card));
        return card;
    }
    QString focused() const
    {
        const QWidget* widget = QApplication::focusWidget();
        const auto* button = qobject_cast<const Button*>(widget);
        return !widget ? QString() : button ? "button " + button->text() : widget->objectName();
    }
    int topOf(const QString& item) const
    {
        const auto* widget = column.findChild<QWidget*>(item);
        return widget ? widget->y() : INT_MAX;
    }
    qsizetype made() const
    {
        const QList<QWidget*> all =
            column.viewport()->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
        return std::ranges::count_if(all, &QWidget::isVisible);
    }
    void press(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }

    int more = 0; ///< height of each item
    QList<QUuid> items;
    LazyColumn column{{400, 20, 10, 100}, [this](const QUuid& item) { return makeItem(item); }};
};

} // namespace

TEST_F(LazyColumns, LeadsTheKeyboardThroughAll)
{
    column.findChild<Button*>()->setFocus(Qt::TabFocusReason);
    for (const char* want : {"0", "button 0", "1", "button 1", "2"}) {
        press(Qt::Key_Tab);
        EXPECT_EQ(focused(), want);
    }
    for (int i = 0; i < 100; ++i)
        press(Qt::Key_Tab);
    EXPECT_EQ(focused(), "52");
    press(Qt::Key_Backtab);
    EXPECT_EQ(focused(), "button 51");
    for (const auto& [key, want] : {std::pair(Qt::Key_Down, "52"),
                                    {Qt::Key_Up, "51"},
                                    {Qt::Key_End, "499"},
                                    {Qt::Key_Down, "499"},
                                    {Qt::Key_Home, "0"}}) {
        press(key);
        EXPECT_EQ(focused(), want);
        EXPECT_TRUE(
            QRect(QPoint(), column.viewport()->size()).contains(QApplication::focusWidget()->geometry()));
    }
    EXPECT_LT(made(), 30);
}

TEST_F(LazyColumns, KeepsWhatIsOnScreenInItsPlace)
{
    column.verticalScrollBar()->setValue(20'000); // whatever item is there by the heights that are thought
    const QString there = column.childAt(200, 300)->objectName();
    const int before = topOf(there);
    for (int i = 0; i < 20; ++i)
        column.verticalScrollBar()->setValue(column.verticalScrollBar()->value() - 40);
    EXPECT_EQ(topOf(there), before + 800);
    column.setItems(QList<QUuid>{QUuid::createUuid(), QUuid::createUuid()} + items);
    EXPECT_EQ(topOf(there), before + 800) << "what comes before it moves nothing";
}

TEST_F(LazyColumns, GoesThroughItemsHigherThanTheScreen)
{
    column.setItems({});
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    more = 2000;
    column.setItems(items);
    column.findChild<Button*>()->setFocus(Qt::TabFocusReason);
    press(Qt::Key_Tab);
    const int top = topOf("0");
    press(Qt::Key_PageDown);
    press(Qt::Key_PageDown);
    EXPECT_LT(topOf("0"), top - 1000) << "two pages of it";
    press(Qt::Key_End);
    EXPECT_EQ(focused(), "499");
    EXPECT_GE(topOf("499"), 0);
}

TEST_F(LazyColumns, PassesTheKeyboardOnFromWhatGoes)
{
    column.findChild<Button*>()->setFocus(Qt::TabFocusReason);
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    items.remove(1);
    column.setItems(items);
    EXPECT_EQ(column.findChildren<QWidget*>("2").size(), 1);
    EXPECT_EQ(focused(), "2");
    column.setItems({});
    EXPECT_EQ(focused(), "button Top");
}

} // namespace folvane
