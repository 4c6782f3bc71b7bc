#include "controls/BrandMark.h"
#include "controls/ControlGroup.h"
#include "controls/pictures.h"
#include "controls/popUpBelow.h"
#include "controls/sheets/Alert.h"
#include "controls/sheets/NoteBanner.h"
#include "controls/sheets/Panel.h"
#include "controls/style/visualMargin.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QMenu>
#include <QSignalSpy>
#include <QTest>
#include <QTextLayout>

namespace folvane {
namespace {

QRect visibleFrame(const QWidget& widget)
{
    return widget.geometry().marginsRemoved(visualMargin(widget));
}

TEST(VisualMargin, LayoutsCountFromTheVisibleEdge)
{
    QWidget bar;
    QHBoxLayout row(&bar);
    row.setContentsMargins(20, 20, 20, 20);
    row.setSpacing(8);
    auto* mark = new BrandMark(30);
    auto* group = new ControlGroup;
    group->addButton(Icon::Delete, QStringLiteral("Delete Pages"), {});
    auto* tool = new Button(Button::Kind::Tool, QStringLiteral("Split"));
    auto* primary = new Button(Button::Kind::Primary, QStringLiteral("Save As…"));
    const QList<QWidget*> all{mark, group, tool, primary};
    for (QWidget* widget : all)
        row.addWidget(widget);
    bar.resize(row.sizeHint());
    row.activate();
    EXPECT_EQ(visibleFrame(*all.first()).left(), 20);
    for (int i = 1; i < all.size(); ++i)
        EXPECT_EQ(visibleFrame(*all[i]).left() - visibleFrame(*all[i - 1]).right() - 1, 8) << i;
    EXPECT_EQ(bar.height(), visibleFrame(*primary).height() + 40);
    EXPECT_EQ(bar.width() - 1 - visibleFrame(*primary).right(), 20);
    for (const QWidget* widget : all)
        EXPECT_NEAR(visibleFrame(*widget).center().y(), bar.rect().center().y(), 1);
}

int linesOf(const QString& text, const QFont& font, int width)
{
    QTextLayout layout(text, font);
    layout.beginLayout();
    int lines = 0;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        ++lines;
    }
    layout.endLayout();
    return lines;
}

bool hasInk(const QImage& image, const QRect& area)
{
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            const QColor color = image.pixelColor(x, y);
            if (color.alpha() > 200 && color.lightness() < 60)
                return true;
        }
    }
    return false;
}

class NoteBannerAtWidth : public testing::TestWithParam<int> {};

TEST_P(NoteBannerAtWidth, WrapsWithoutClipping)
{
    Panel panel(nullptr, 20);
    auto* note = new NoteBanner(
        QStringLiteral("Folvane switches to the new language after a restart. Save or close the "
                       "files with changes first."),
        NoteBanner::Tone::Warning);
    panel.content().addWidget(note);
    const QMargins shadow = visualMargin(panel);
    const int width = GetParam() + 2 * 20 + shadow.left() + shadow.right();
    panel.resize(width, panel.layout()->totalHeightForWidth(width));
    panel.layout()->activate();
    ASSERT_EQ(note->width(), GetParam());
    const int lines = linesOf(note->text(), note->font(), GetParam() - 2 * 12 - 26);
    EXPECT_NEAR(note->height(), lines * note->fontMetrics().lineSpacing() + 2 * 12, lines);
    const QImage image = picture(*note);
    const int line = note->fontMetrics().height();
    EXPECT_TRUE(hasInk(image, {38, note->height() - 12 - line, note->width() - 50, line}));
    EXPECT_FALSE(hasInk(image, {0, note->height() - 11, note->width(), 11}));
    EXPECT_FALSE(hasInk(image, {note->width() - 11, 0, 11, note->height()}));
    EXPECT_TRUE(alike(colorAt(image, {GetParam() / 2.0, 4}), at(0.1, theme::warning)));
}

INSTANTIATE_TEST_SUITE_P(Widths, NoteBannerAtWidth, testing::Values(180, 320, 700));

// At either edge of the window the menu stays inside.
TEST(MenuOfAButton, StaysWithinTheWindow)
{
    for (const bool isAtTheRight : {false, true}) {
        QWidget window;
        window.setGeometry(100, 100, 400, 200);
        auto* button = new Button(Button::Kind::Tool, QStringLiteral("More"), &window);
        button->resize(button->sizeHint());
        button->move(isAtTheRight ? window.width() - button->width() : 0, 0);
        window.show();
        QMenu menu;
        QAction* entry = menu.addAction(QString(16, u'W'));
        popUpBelow(menu, *button);
        const QRect shown = menu.actionGeometry(entry).translated(menu.pos());
        EXPECT_TRUE(window.geometry().contains(shown)) << shown.left() << " to " << shown.right();
    }
}

TEST(SheetFrameSize, FollowsItsTexts)
{
    Alert alert(QStringLiteral("Something went wrong"), QStringLiteral("Short."));
    alert.addButton(QStringLiteral("OK"), Alert::Role::Default);
    alert.open();
    const QSize before = alert.size();
    alert.setText(QString(400, u'W'));
    QCoreApplication::sendPostedEvents(&alert, QEvent::LayoutRequest);
    EXPECT_EQ(alert.width(), before.width());
    const auto* text = alert.findChildren<QLabel*>().last();
    EXPECT_GT(alert.height(), before.height() + 8 * text->fontMetrics().height());
    EXPECT_GE(text->height(), text->heightForWidth(text->width()));
    alert.setText(QStringLiteral("Short."));
    QCoreApplication::sendPostedEvents(&alert, QEvent::LayoutRequest);
    EXPECT_EQ(alert.size(), before);
}

TEST(SheetFrameSize, KeepsItsButtonsOnTheScreen)
{
    Alert alert(QStringLiteral("Something went wrong"), QStringLiteral("Short."));
    alert.addButton(QStringLiteral("OK"), Alert::Role::Default);
    alert.open();
    const auto* button = alert.findChild<Button*>();
    const QRect screen = alert.screen()->availableGeometry();
    alert.move(alert.x(), screen.bottom() - alert.height());
    alert.setText(QString(400, u'W'));
    QCoreApplication::sendPostedEvents(&alert, QEvent::LayoutRequest);
    EXPECT_LE(button->mapToGlobal(button->rect().bottomLeft()).y(), screen.bottom());
}

TEST(SheetFrameLook, IsRoundOnATransparentGroundAndHoldsAllOfIt)
{
    SheetFrame sheet(QStringLiteral("“Salary.pdf” is locked"), nullptr, 442);
    sheet.setIcon(Icon::Lock);
    sheet.content().addWidget(new QLineEdit);
    Button* button = sheet.addButton(Button::Kind::Primary, QStringLiteral("Open"));
    sheet.open();
    EXPECT_EQ(sheet.windowModality(), Qt::WindowModal);
    const QRect surface =
        QRect(QPoint(), QSize(442, sheet.height())).translated((sheet.width() - 442) / 2, 0);
    EXPECT_EQ(visibleFrame(*button).right(), surface.right() - 24);
    const QImage image = picture(sheet);
    EXPECT_EQ(colorAt(image, {0, 0}).alpha(), 0);
    EXPECT_TRUE(alike(colorAt(image, {surface.center().x() + 0.5, 30}), theme::surface, 0));
    EXPECT_LT(colorAt(image, {surface.left() + 1.5, visibleFrame(*button).bottom() + 23.5}).alpha(), 128);
}

} // namespace
} // namespace folvane
