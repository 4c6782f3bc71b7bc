#include "controls/ControlGroup.h"
#include "controls/sheets/Alert.h"
#include "controls/sheets/NoteBanner.h"
#include "controls/sheets/Veil.h"
#include "controls/style/visualMargin.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QScreen>
#include <QTest>

#include <gtest/gtest.h>

namespace folvane {
namespace {

TEST(VisualMargin, LayoutsCountFromTheVisibleEdge)
{
    QWidget bar;
    QHBoxLayout row(&bar);
    row.setContentsMargins(20, 20, 20, 20);
    row.setSpacing(8);
    ControlGroup group;
    Button tool(Button::Kind::Tool, "Split");
    Button primary(Button::Kind::Primary, "Save As…");
    for (QWidget* widget : std::initializer_list<QWidget*>{&group, &tool, &primary})
        row.addWidget(widget);
    bar.resize(row.sizeHint());
    row.activate();
    const auto frame = [](const QWidget& widget) {
        return widget.geometry().marginsRemoved(visualMargin(widget));
    };
    EXPECT_EQ(frame(group).left(), 20);
    EXPECT_EQ(frame(tool).left() - frame(group).right() - 1, 8);
    EXPECT_EQ(frame(primary).left() - frame(tool).right() - 1, 8);
    EXPECT_EQ(bar.height(), frame(primary).height() + 40);
    EXPECT_EQ(bar.width() - 1 - frame(primary).right(), 20);
}

TEST(NoteBanner, GrowsWithTheLinesOfItsText)
{
    const NoteBanner note(QString(20, u'W') + u' ' + QString(20, u'W'), NoteBanner::Tone::Danger);
    const QFontMetrics font = note.fontMetrics();
    EXPECT_EQ(note.heightForWidth(2000), font.height() + 2 * 12);
    const int oneWord = 12 + 16 + 10 + font.horizontalAdvance(QString(20, u'W')) + 12;
    EXPECT_EQ(note.heightForWidth(oneWord + 1), font.height() + font.lineSpacing() + 2 * 12);
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
