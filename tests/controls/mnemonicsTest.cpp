#include "controls/style/mnemonics.h"

#include <QMenu>
#include <QMenuBar>
#include <QTest>

#include <gtest/gtest.h>

namespace folvane {
namespace {

struct Titles {
    const char* name;
    QStringList given;
    QStringList marked;
};

class Mnemonics : public testing::TestWithParam<Titles> {};

TEST_P(Mnemonics, Are)
{
    EXPECT_EQ(withMnemonics(GetParam().given), GetParam().marked);
    EXPECT_EQ(withMnemonics(GetParam().marked), GetParam().marked) << "a menu that shows again";
}

INSTANTIATE_TEST_SUITE_P(
    Menus, Mnemonics,
    testing::Values(Titles{"FirstLetters", {"Open…", "Save As…"}, {"&Open…", "&Save As…"}},
                    Titles{"LaterWords", {"Close File", "Close Window"}, {"&Close File", "Close &Window"}},
                    Titles{"LettersWithin", {"Cut", "Cute"}, {"&Cut", "C&ute"}},
                    Titles{"NoneLeft", {"A", "a"}, {"&A", "a"}},
                    Titles{"Given", {"Cut", "&Copy"}, {"C&ut", "&Copy"}},
                    Titles{"KeysBehind", {"…\tDel"}, {"…\tDel"}},
                    Titles{"Ampersands", {"&&Sons", "R&&D"}, {"&&&Sons", "&R&&D"}},
                    Titles{"OtherScripts", {"Öffnen", "印刷"}, {"&Öffnen", "&印刷"}}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(MnemonicUnderlines, ShowWhileAltIsHeldOrItsMenuIsUp)
{
    QWidget window;
    QMenuBar bar(&window);
    QMenu& menu = *bar.addMenu("&File");
    menu.addAction("Open…");
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    QTest::keyPress(&window, Qt::Key_Alt);
    EXPECT_TRUE(showsMnemonics());
    QTest::keyClick(&window, Qt::Key_F, Qt::AltModifier);
    QTest::keyRelease(&window, Qt::Key_Alt);
    QCoreApplication::processEvents();
    ASSERT_TRUE(menu.isVisible());
    EXPECT_TRUE(showsMnemonics());
    EXPECT_EQ(menu.actions().first()->text(), "&Open…");
    menu.hide();
    bar.clearFocus();
    QCoreApplication::processEvents();
    EXPECT_FALSE(showsMnemonics());
}

} // namespace
} // namespace folvane
