#include "shell/WindowTest.h"

#include "controls/sheets/Alert.h"
#include "controls/style/focusRing.h"
#include "shell/QtPanels.h"

namespace folvane {
namespace {

class Keyboard : public WindowTest {
protected:
    void SetUp() override { desktops.setWindow(&window); }
    void expectPagesHaveIt(const char* after)
    {
        const auto haveIt = [this] { return window.isActiveWindow() && grid().hasFocus(); };
        EXPECT_TRUE(QTest::qWaitFor(haveIt)) << "after " << after;
    }

    QtPanels desktops;
};

TEST_F(Keyboard, ComesBackToThePagesWheneverTheirDocumentIsShown)
{
    openPages(3, "one");
    openPages(3, "two");
    hand.tabTo("two, 3 pages");
    hand.key(Qt::Key_Return);
    expectPagesHaveIt("choosing the document that is shown");
    hand.tabTo("two, 3 pages");
    hand.key(Qt::Key_PageDown, Qt::ControlModifier);
    expectPagesHaveIt("going to the next file");
    clickPage(0);
    hand.tabTo("Delete Pages");
    hand.key(Qt::Key_Space);
    expectPagesHaveIt("deleting by the button's key");
    hand.key(Qt::Key_Delete);
    hand.key(Qt::Key_Return);
    expectPagesHaveIt("an error");
    hand.press("Close “one”");
    hand.press("Cancel");
    expectPagesHaveIt("a question");
    QCoro::Task<QList<QUrl>> choosing = desktops.chooseOpen({});
    hand.key(Qt::Key_Escape);
    EXPECT_EQ(await(std::move(choosing)), QList<QUrl>());
    expectPagesHaveIt("a panel");
    model.showToast("Saved", makePdf("new.pdf", 3));
    hand.tabTo("Show in Folder");
    model.toast = std::nullopt;
    expectPagesHaveIt("a toast that went with it");
    model.destination = Destination();
    panels.openAnswers.enqueue({makePdf("new.pdf", 3)});
    hand.press("Drop PDFs or images here");
    expectPagesHaveIt("opening by the panel of Home");
}

TEST_F(Keyboard, NeitherReturnNorSpaceReplacesAFile)
{
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space, Qt::Key_Escape}) {
        QCoro::Task<bool> replace = desktops.confirmReplace(QUrl("file:///copy.pdf"));
        auto* question = shown<Alert>();
        ASSERT_TRUE(question && QTest::qWaitFor([question] { return question->isActiveWindow(); }));
        const auto* marked = qobject_cast<Button*>(question->focusWidget());
        EXPECT_TRUE(marked->text() == "Cancel" && showsFocus(*marked) && marked->isDefault());
        hand.key(key);
        EXPECT_FALSE(await(std::move(replace)));
    }
}

} // namespace
} // namespace folvane
