#include "controls/Button.h"
#include "controls/pictures.h"
#include "controls/style/visualMargin.h"

#include <QSignalSpy>
#include <QTest>

namespace folvane {
namespace {

using Kind = Button::Kind;

struct LookCase {
    const char* name;
    Kind kind;
    bool destructive;
    QColor fill;
    double pressed;
};

class ButtonLook : public testing::TestWithParam<LookCase> {
protected:
    ButtonLook() : button(GetParam().kind, "Delete Pages")
    {
        button.setDestructive(GetParam().destructive);
        button.resize(button.sizeHint());
    }
    /// Beside the label and away from the outline.
    QColor ground()
    {
        return colorAt(picture(button), QPointF(button.frame().left() + 7, button.frame().center().y()));
    }
    Button button;
};

TEST_P(ButtonLook, FillsItsFrameOnly)
{
    EXPECT_TRUE(alike(ground(), GetParam().fill, 12));
    for (const double scale : {1.0, 2.0}) {
        const QImage image = picture(button, scale);
        EXPECT_LT(colorAt(image, button.frame().topLeft() + QPointF(0.5, 0.5)).alpha(), 64) << "it is round";
        EXPECT_LT(colorAt(image, {0.5, 0.5}).alpha(), 2);
    }
}

TEST_P(ButtonLook, DisabledFadesAsOnePictureAndIgnoresPresses)
{
    const QColor before = ground();
    button.setEnabled(false);
    const QSignalSpy clicked(&button, &Button::clicked);
    QTest::mousePress(&button, Qt::LeftButton);
    EXPECT_TRUE(alike(ground(), at(0.4, before), 1)) << "its shadow does not shine through";
    QTest::mouseRelease(&button, Qt::LeftButton);
    EXPECT_TRUE(clicked.isEmpty());
}

TEST_P(ButtonLook, PressedFadesAndComesBack)
{
    button.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&button));
    const auto looks = [this](double opacity) {
        return std::abs(ground().alphaF() - opacity) < 0.01
               && alike(ground(), at(opacity, GetParam().fill), 12);
    };
    QTest::mousePress(&button, Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([&] { return looks(GetParam().pressed); }));
    QTest::mouseRelease(&button, Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([&] { return ground().alpha() == 255; }));
}

TEST_P(ButtonLook, WithoutItsTitleIsASquareOfTheSameHeight)
{
    const QSize titled = button.sizeHint().shrunkBy(visualMargin(button));
    button.setSymbol(Icon::Scissors);
    EXPECT_GT(button.sizeHint().shrunkBy(visualMargin(button)).width(), titled.width());
    button.setIconOnly(true);
    EXPECT_EQ(button.sizeHint().shrunkBy(visualMargin(button)), QSize(titled.height(), titled.height()));
}

INSTANTIATE_TEST_SUITE_P(Kinds, ButtonLook,
                         testing::Values(LookCase{"Primary", Kind::Primary, false, theme::accent, 0.85},
                                         LookCase{"Destructive", Kind::Primary, true, theme::danger, 0.85},
                                         LookCase{"Secondary", Kind::Secondary, false, theme::surface, 0.75},
                                         LookCase{"Tool", Kind::Tool, false, theme::surface, 0.75}),
                         [](const auto& row) { return std::string(row.param.name); });

} // namespace
} // namespace folvane
