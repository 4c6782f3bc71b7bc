#include "controls/Button.h"

#include "controls/pictures.h"
#include "controls/style/visualMargin.h"

#include <QSignalSpy>
#include <QTest>

namespace folvane {
namespace {

using Kind = Button::Kind;

// Beside the label and away from the outline.
QPointF blank(const Button& button)
{
    return QPointF(button.frame().left() + 7, button.frame().center().y());
}

struct MeasureCase {
    const char* name;
    Kind kind;
    int fontSize;
    int horizontal;
    int vertical;
};
class ButtonMeasures : public testing::TestWithParam<MeasureCase> {};

TEST_P(ButtonMeasures, ComeFromTheLabel)
{
    const Button button(GetParam().kind, QStringLiteral("Save As…"));
    EXPECT_EQ(button.font().pixelSize(), GetParam().fontSize);
    EXPECT_EQ(button.font().weight(), QFont::DemiBold);
    const QFontMetrics metrics(button.font());
    const QSize frame = button.sizeHint().shrunkBy(visualMargin(button));
    EXPECT_NEAR(frame.width(), metrics.horizontalAdvance(button.text()) + 2 * GetParam().horizontal, 1);
    EXPECT_EQ(frame.height(), metrics.height() + 2 * GetParam().vertical);
}

TEST_P(ButtonMeasures, StayWithoutATitle)
{
    Button button(GetParam().kind, QStringLiteral("Split"));
    const QSize titled = button.sizeHint().shrunkBy(visualMargin(button));
    button.setSymbol(Icon::Scissors);
    EXPECT_GT(button.sizeHint().shrunkBy(visualMargin(button)).width(), titled.width());
    button.setIconOnly(true);
    const QSize icon = button.sizeHint().shrunkBy(visualMargin(button));
    EXPECT_EQ(icon, QSize(titled.height(), titled.height()));
    EXPECT_EQ(button.text(), QStringLiteral("Split"));
}

INSTANTIATE_TEST_SUITE_P(Kinds, ButtonMeasures,
                         testing::Values(MeasureCase{"Primary", Kind::Primary, 14, 22, 10},
                                         MeasureCase{"Secondary", Kind::Secondary, 14, 18, 10},
                                         MeasureCase{"Tool", Kind::Tool, 13, 12, 8}),
                         [](const auto& row) { return std::string(row.param.name); });

struct LookCase {
    const char* name;
    Kind kind;
    bool destructive;
    QColor fill;
    double pressed;
};
class ButtonLook : public testing::TestWithParam<LookCase> {
protected:
    ButtonLook() : button(GetParam().kind, QStringLiteral("Delete Pages"))
    {
        button.setDestructive(GetParam().destructive);
        button.resize(button.sizeHint());
    }

    Button button;
};

TEST_P(ButtonLook, FillsItsFrameOnly)
{
    for (const double scale : {1.0, 2.0}) {
        const QImage image = picture(button, scale);
        const QRectF frame = button.frame();
        EXPECT_TRUE(alike(colorAt(image, blank(button)), GetParam().fill, 12));
        EXPECT_LT(colorAt(image, frame.topLeft() + QPointF(0.5, 0.5)).alpha(), 64) << "the corner is round";
        EXPECT_LT(colorAt(image, {0.5, 0.5}).alpha(), 2);
    }
}

TEST_P(ButtonLook, DisabledShowsAtFourTenthsAndIgnoresPresses)
{
    const QColor before = colorAt(picture(button), blank(button));
    button.setEnabled(false);
    EXPECT_TRUE(alike(colorAt(picture(button), blank(button)), at(0.4, before)));
    const QSignalSpy clicked(&button, &Button::clicked);
    QTest::mousePress(&button, Qt::LeftButton);
    EXPECT_TRUE(alike(colorAt(picture(button), blank(button)), at(0.4, before)));
    QTest::mouseRelease(&button, Qt::LeftButton);
    EXPECT_TRUE(clicked.isEmpty());
}

TEST_P(ButtonLook, PressedFadesAndComesBack)
{
    button.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&button));
    const auto looks = [this](double opacity) {
        const QColor color = colorAt(picture(button), blank(button));
        return std::abs(color.alphaF() - opacity) < 0.01 && alike(color, at(opacity, GetParam().fill), 12);
    };
    QTest::mousePress(&button, Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([&] { return looks(GetParam().pressed); }));
    QTest::mouseRelease(&button, Qt::LeftButton);
    const auto isWhole = [this] { return colorAt(picture(button), blank(button)).alpha() == 255; };
    EXPECT_TRUE(QTest::qWaitFor(isWhole));
}

INSTANTIATE_TEST_SUITE_P(Kinds, ButtonLook,
                         testing::Values(LookCase{"Primary", Kind::Primary, false, theme::accent, 0.85},
                                         LookCase{"Destructive", Kind::Primary, true, theme::danger, 0.85},
                                         LookCase{"Secondary", Kind::Secondary, false, theme::surface, 0.75},
                                         LookCase{"Tool", Kind::Tool, false, theme::surface, 0.75}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(PrimaryButton, RunsFromAccentToDeepAccentUnlessDestructive)
{
    Button button(Kind::Primary, QStringLiteral("Save As…"));
    button.resize(button.sizeHint());
    const QPointF left = blank(button);
    const QPointF right(button.frame().right() - 6, button.frame().center().y());
    EXPECT_TRUE(alike(colorAt(picture(button), right), theme::accentDeep, 12));
    EXPECT_GT(colorAt(picture(button), left).red(), colorAt(picture(button), right).red() + 25);
    button.setDestructive(true);
    EXPECT_TRUE(alike(colorAt(picture(button), left), theme::danger, 0));
    EXPECT_TRUE(alike(colorAt(picture(button), right), theme::danger, 0));
}

TEST(PrimaryButton, CastsAShadowInItsOwnColour)
{
    Button button(Kind::Primary, QStringLiteral("Save As…"));
    button.resize(button.sizeHint());
    const QPointF edge(QRectF(button.frame()).center().x(),
                       button.frame().bottom() + 1 + 4); // half of it is left here
    EXPECT_TRUE(alike(colorAt(picture(button, 2), edge), at(0.125, theme::accent), 4));
    button.setDestructive(true);
    EXPECT_TRUE(alike(colorAt(picture(button, 2), edge), at(0.125, theme::danger), 4));
}

// What is below a faded button must not be its own shadow shining through.
TEST(PrimaryButton, FadesAsOnePicture)
{
    Button button(Kind::Primary, QStringLiteral("Save As…"));
    button.setDestructive(true);
    button.resize(button.sizeHint());
    button.setEnabled(false);
    EXPECT_NEAR(colorAt(picture(button), blank(button)).alpha(), 102, 1);
}

} // namespace
} // namespace folvane
