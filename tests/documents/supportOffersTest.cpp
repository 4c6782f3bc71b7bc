#include "documents/ModelTest.h"

namespace folvane {

namespace {

using namespace std::chrono_literals;

class SupportOffers : public ModelTest {
protected:
    /// A new run of the program, with the preferences of the one before.
    void restart()
    {
        model = std::make_unique<AppModel>(Services{engine, panels, preferences, workspace, clock});
    }
    void saveFiles(int count, const QString& name)
    {
        const OpenFilePtr file = open({putPdf(name + " source.pdf", 1)});
        for (int i = 0; i < count; ++i)
            saveAs(file, name + QString::number(i) + ".pdf");
    }
    /// What comes up a second later, and is then dismissed: "S" for support, "F" for a friend.
    QString comesUp()
    {
        clock.advance(1s);
        drainEngine();
        const std::optional<SupportPrompt> prompt = model->support;
        model->support = std::nullopt;
        return !prompt ? QString() : *prompt == SupportPrompt::TellAFriend ? "F" : "S";
    }
    void letDaysPass(int days) { clock.advance(24h * days); }
};

} // namespace

TEST_F(SupportOffers, ComeByTheirRules)
{
    saveFiles(3, "first");
    EXPECT_EQ(comesUp(), "S") << "with the first result, and no friend in the same run";
    saveFiles(1, "second");
    EXPECT_EQ(comesUp(), "");
    restart();
    EXPECT_EQ(comesUp(), "");
    saveFiles(1, "third");
    EXPECT_EQ(comesUp(), "F");
    saveFiles(1, "fourth");
    EXPECT_EQ(comesUp(), "");
    letDaysPass(29);
    saveFiles(1, "fifth");
    EXPECT_EQ(comesUp(), "");
    letDaysPass(1);
    saveFiles(1, "sixth");
    EXPECT_EQ(comesUp(), "F") << "30 days later once more";
    letDaysPass(100);
    saveFiles(1, "seventh");
    EXPECT_EQ(comesUp(), "") << "and never again";
}

TEST_F(SupportOffers, AreLostWhereSomethingElseIsUp)
{
    saveFiles(1, "first");
    model->errorMessage = "Something";
    EXPECT_EQ(comesUp(), "");
    model->errorMessage = std::nullopt;
    saveFiles(1, "second");
    EXPECT_EQ(comesUp(), "");
}

TEST_F(SupportOffers, NeverAskOfAFriendWhoWasTold)
{
    preferences.setValue("support.offeredAfterFirstResult", "true"); // as a settings file gives it
    preferences.setValue("friend.savedFiles", "1");
    saveFiles(1, "first");
    EXPECT_EQ(comesUp(), "");
    saveFiles(1, "second");
    EXPECT_EQ(comesUp(), "F");
    model->answerFriend();
    letDaysPass(31);
    saveFiles(1, "third");
    EXPECT_EQ(comesUp(), "");
    preferences.setValue("friend.state", "later");
    preferences.setValue("friend.askedAt", "some day");
    saveFiles(1, "fourth");
    EXPECT_EQ(comesUp(), "");
}

} // namespace folvane
