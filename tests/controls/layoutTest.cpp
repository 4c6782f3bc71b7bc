#include "controls/ControlGroup.h"
#include "controls/pictures.h"
#include "controls/popUpBelow.h"
#include "controls/sheets/Alert.h"
#include "controls/sheets/NoteBanner.h"
#include "controls/sheets/Veil.h"
#include "controls/style/visualMargin.h"

#include <QHBoxLayout>
#include <QMenu>
#include <QScreen>
#include <QTest>

namespace folvane {
namespace {

TEST(VisualMargin, LayoutsCountFromTheVisibleEdge)
{
    QWidget bar;
    QHBoxLayout row(&bar);
    row.setContentsMargins(20, 20, 20, 20);
    row.setSpacing(8);
    auto* group = new ControlGroup;
    group->addButton(Icon::Delete, "Delete Pages", {});
    auto* tool = new Button(Button::Kind::Tool, "Split");
    auto* primary = new Button(Button::Kind::Primary, "Save As…");
    const QList<QWidget*> all{group, tool, primary};
    for (QWidget* widget : all)
        row.addWidget(widget);
    bar.resize(row.sizeHint());
    row.activate();
    const auto frame = [&](qsizetype i) { return all[i]->geometry().marginsRemoved(visualMargin(*all[i])); };
    EXPECT_EQ(frame(0).left(), 20);
    for (int i = 1; i < all.size(); ++i)
        EXPECT_EQ(frame(i).left() - frame(i - 1).right() - 1, 8) << i;
    EXPECT_EQ(bar.height(), frame(2).height() + 40);
    EXPECT_EQ(bar.width() - 1 - frame(2).right(), 20);
}

TEST(NoteBanner, GrowsWithTheLinesOfItsText)
{
    const NoteBanner note(QString(20, u'W') + u' ' + QString(20, u'W'), NoteBanner::Tone::Danger);
    const QFontMetrics font = note.fontMetrics();
    EXPECT_EQ(note.heightForWidth(2000), font.height() + 2 * 12);
    const int oneWord = 12 + 16 + 10 + font.horizontalAdvance(QString(20, u'W')) + 12;
    EXPECT_EQ(note.heightForWidth(oneWord + 1), font.height() + font.lineSpacing() + 2 * 12);
}

// At either edge of the window the menu stays inside.
TEST(MenuOfAButton, StaysWithinTheWindow)
{
    for (const bool isAtTheRight : {false, true}) {
        QWidget window;
        window.setGeometry(100, 100, 400, 200);
        auto* button = new Button(Button::Kind::Tool, "More", &window);
        button->resize(button->sizeHint());
        button->move(isAtTheRight ? window.width() - button->width() : 0, 0);
        window.show();
        QMenu menu;
        QAction* entry = menu.addAction(QString(16, u'W'));
        popUpBelow(menu, *button);
        EXPECT_TRUE(window.geometry().contains(menu.actionGeometry(entry).translated(menu.pos())));
    }
}

TEST(SheetFrame, FollowsItsTextsAndKeepsItsButtonsOnTheScreen)
{
    Alert alert("Something went wrong", "Short.");
    alert.addButton("OK", Alert::Role::Default);
    alert.open();
    EXPECT_EQ(alert.windowModality(), Qt::WindowModal);
    const QSize before = alert.size();
    const QRect screen = alert.screen()->availableGeometry();
    alert.move(alert.x(), screen.bottom() - alert.height());
    const auto say = [&alert](const QString& text) {
        alert.setText(text);
        QCoreApplication::sendPostedEvents(&alert, QEvent::LayoutRequest);
    };
    say(QString(400, u'W'));
    EXPECT_EQ(alert.width(), before.width());
    const auto* text = alert.findChildren<QLabel*>().last();
    EXPECT_GT(alert.height(), before.height() + 8 * text->fontMetrics().height());
    EXPECT_GE(text->height(), text->heightForWidth(text->width()));
    const auto* button = alert.findChild<Button*>();
    EXPECT_LE(button->mapToGlobal(button->rect().bottomLeft()).y(), screen.bottom());
    say("Short.");
    EXPECT_EQ(alert.size(), before);
    EXPECT_EQ(colorAt(picture(alert), {0, 0}).alpha(), 0) << "round, on a transparent ground";
}

TEST(Veil, StaysUntilNothingHasToBeAnsweredAnyMore)
{
    QWidget window;
    const Veil veil(&window);
    window.show();
    auto first = std::make_unique<QDialog>(&window);
    QDialog second(&window);
    first->open();
    second.open();
    EXPECT_TRUE(QTest::qWaitFor([&] { return veil.isVisible(); }));
    first.reset();
    EXPECT_TRUE(veil.isVisible());
    second.hide();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !veil.isVisible(); }));
}

} // namespace
} // namespace folvane
