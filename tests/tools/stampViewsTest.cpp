#include "controls/sliders/NumberSlider.h"
#include "documents/ModelTest.h"
#include "tools/stamps/NewStampMenu.h"
#include "tools/stamps/NewStampSheet.h"
#include "tools/stamps/SelectedStamp.h"
#include "tools/stamps/StampLibraryPanel.h"
#include "tools/stamps/StampsView.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

namespace folvane {
namespace {

class StampViews : public ModelTest {
protected:
    void SetUp() override { emptyLibrary(); } // all tests have one home

    void emptyLibrary() const
    {
        while (!model->stamps.stamps.value().isEmpty())
            model->stamps.remove(model->stamps.stamps.value().first().id);
    }
};

TEST_F(StampViews, TheSliderAndTheSelectedStampStayInStep)
{
    struct Step {
        double selected; ///< the stamp's angle
        Qt::Key key;     ///< pressed then; 0 for none
        const char* label;
        std::vector<double> asked;
    };
    constexpr Qt::Key noKey{};
    SelectedStamp controls(*model);
    auto& slider = *controls.findChild<NumberSlider*>();
    const auto shows = [&controls](const QString& text) {
        const QList<QLabel*> labels = controls.findChildren<QLabel*>();
        return std::ranges::any_of(labels, [&text](const QLabel* label) { return label->text() == text; });
    };
    std::vector<double> asked;
    QObject::connect(&controls, &SelectedStamp::rotateRequested,
                     [&asked](double degrees) { asked.push_back(degrees); });
    for (const Step& step : {Step{0, noKey, "0°", {}}, Step{44, Qt::Key_Right, "45°", {45}},
                             Step{12.4, noKey, "12°", {}}, Step{12.6, Qt::Key_Left, "12°", {12}},
                             Step{30, Qt::Key_PageUp, "45°", {45}}, Step{0, Qt::Key_Home, "-180°", {-180}},
                             Step{270, noKey, "270°", {}}, Step{270, Qt::Key_Left, "179°", {179}},
                             Step{-0.3, noKey, "0°", {}}, Step{179, Qt::Key_End, "180°", {180}}}) {
        asked.clear();
        StampPlacement placement;
        placement.rotation = step.selected;
        controls.setSelected(placement);
        EXPECT_EQ(asked, std::vector<double>()) << "selecting asks for nothing";
        if (step.key != noKey)
            QTest::keyClick(&slider, step.key);
        EXPECT_EQ(asked, step.asked) << step.selected;
        EXPECT_TRUE(shows(step.label)) << step.label;
    }
}

TEST_F(StampViews, ChangesOfTheLibraryKeepTheScrollAndTheKeyboard)
{
    QList<QUuid> stamps;
    for (int n = 0; n < 40; ++n)
        stamps.append(model->stamps.add({"no picture", 1, 1}, QString::number(n))->id);
    StampsView view(*model);
    view.resize(700, 500);
    view.show();
    view.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&view));
    view.takeFocus();
    QScrollBar& bar = *view.findChild<QScrollArea*>()->verticalScrollBar();
    const auto keyboard = [&view] { return view.window()->focusWidget()->accessibleName(); };
    const auto change = [&bar](const std::function<void()>& change) {
        const int before = bar.value();
        change();
        QTest::qWait(0);
        EXPECT_EQ(bar.value(), before);
    };
    for (int n = 0; n < 20; ++n)
        QTest::keyClick(view.window()->focusWidget(), Qt::Key_Right);
    EXPECT_EQ(keyboard(), "20");
    EXPECT_GT(bar.value(), 0);
    change([&] { model->stamps.rename(stamps[20], "Twenty"); });
    change([&] { model->stamps.add({"no picture", 1, 1}, "Another"); });
    EXPECT_EQ(keyboard(), "Twenty");
    change([&] { model->stamps.remove(stamps[20]); });
    EXPECT_EQ(keyboard(), "21");
    change([&] { model->stamps.remove(stamps[30]); });
    QTest::keyClick(view.window()->focusWidget(), Qt::Key_End);
    model->stamps.remove(model->stamps.stamps.value().last().id);
    EXPECT_EQ(keyboard(), "39") << "the last one that is left";
    emptyLibrary();
    EXPECT_EQ(view.window()->focusWidget(), view.findChild<NewStampMenu*>());
}

TEST_F(StampViews, ThePanelTakesWhatIsPastedButNotFromATextField)
{
    QWidget window;
    QLineEdit field(&window);
    QPushButton elsewhere(&window);
    new StampLibraryPanel(*model, &window);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    QGuiApplication::clipboard()->setText("/nowhere/picture.png");
    const auto pasteInto = [&window](QWidget& widget) {
        widget.setFocus();
        QTest::keyClick(window.windowHandle(), Qt::Key_V, Qt::ControlModifier);
        return window.findChild<NewStampSheet*>() != nullptr;
    };
    EXPECT_FALSE(pasteInto(field));
    EXPECT_EQ(field.text(), "/nowhere/picture.png");
    EXPECT_TRUE(pasteInto(elsewhere));
}

} // namespace
} // namespace folvane
