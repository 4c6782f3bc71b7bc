#include "controls/style/mnemonics.h"

#include <QMenu>
#include <QMenuBar>
#include <QTest>

#include <gtest/gtest.h>

namespace folvane {
namespace {

TEST(Mnemonics, AreFirstLettersWhereTheyAreFree)
{
    struct Titles {
        QStringList given;
        QStringList marked;
    };
    for (const auto& [given, marked] :
         {Titles{{"Open…", "Save As…"}, {"&Open…", "&Save As…"}},
          Titles{{"Close File", "Close Window"}, {"&Close File", "Close &Window"}},
          Titles{{"Cut", "Cute"}, {"&Cut", "C&ute"}}, Titles{{"A", "a"}, {"&A", "a"}},
          Titles{{"Cut", "&Copy"}, {"C&ut", "&Copy"}}, Titles{{"…\tDel"}, {"…\tDel"}},
          Titles{{"&&Sons", "R&&D"}, {"&&&Sons", "&R&&D"}},
          Titles{{"Öffnen", "印刷"}, {"&Öffnen", "&印刷"}}}) {
        EXPECT_EQ(withMnemonics(given), marked);
        EXPECT_EQ(withMnemonics(marked), marked) << "a menu that shows again";
    }
}

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
