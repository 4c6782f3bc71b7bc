#include "controls/Button.h"
#include "controls/style/Theme.h"

#include <QImage>
#include <QTest>

#include <gtest/gtest.h>

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
        button.move(300, 300); // away from the pointer
        button.show();
    }
    QColor colorAt(const QPoint& place)
    {
        QImage image(button.size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        button.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
        return image.pixelColor(place);
    }
    /// Beside the label and away from the outline.
    QColor ground() { return colorAt({button.frame().left() + 7, button.frame().center().y()}); }
    bool fadesTo(double opacity)
    {
        return QTest::qWaitFor([&] { return std::abs(ground().alphaF() - opacity) < 0.01; });
    }
    Button button;
};

// As one picture: its shadow does not shine through.
TEST_P(ButtonLook, FadesWhilePressedAndWhenDisabled)
{
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&button));
    EXPECT_NEAR(ground().red(), GetParam().fill.red(), 12);
    EXPECT_NEAR(ground().blue(), GetParam().fill.blue(), 12);
    EXPECT_LT(colorAt(button.frame().topLeft()).alpha(), 64) << "it is round";
    QTest::mousePress(&button, Qt::LeftButton);
    EXPECT_TRUE(fadesTo(GetParam().pressed));
    QTest::mouseRelease(&button, Qt::LeftButton);
    EXPECT_TRUE(fadesTo(1));
    button.setEnabled(false);
    EXPECT_TRUE(fadesTo(0.4));
}

INSTANTIATE_TEST_SUITE_P(Kinds, ButtonLook,
                         testing::Values(LookCase{"Primary", Kind::Primary, false, theme::accent, 0.85},
                                         LookCase{"Destructive", Kind::Primary, true, theme::danger, 0.85},
                                         LookCase{"Secondary", Kind::Secondary, false, theme::surface, 0.75},
                                         LookCase{"Tool", Kind::Tool, false, theme::surface, 0.75}),
                         [](const auto& row) { return std::string(row.param.name); });

} // namespace
} // namespace folvane
