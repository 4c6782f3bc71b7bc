#include "tour/steps.h"

#include <QClipboard>
#include <QGuiApplication>

namespace folvane {

namespace {

/// Saves the document, and lets the time pass after which a request may come.
void saveAndWait(Tour& tour, const QString& name)
{
    tour.save(name, [&tour] { tour.press("Save As…"); });
    tour.clock.advance(std::chrono::seconds(1));
    QCoreApplication::processEvents();
}

} // namespace

void showAbout(Tour& tour)
{
    tour.press("About Folvane", "about");
    tour.hand.tabTo("Telegram");
    tour.keys({Qt::Key_Space}, "about-links");
    Tour::check(tour.workspace.openedLinks.size() == 1, "a link goes to the browser");
    tour.hand.tabTo("Support");
    tour.keys({Qt::Key_Space}, "about-support");
    tour.press("Done");
    tour.model.updates.result = UpdateChecker::Result(UpdateRelease{"3.1", 99});
    tour.picture("about-update");
    tour.hand.tabTo("Download");
    tour.keys({Qt::Key_Space}, "about-update-focused");
    Tour::check(tour.workspace.openedLinks.last() == tour.model.updates.productPage(), "to the maker's page");
    tour.model.updates.result = UpdateChecker::Result(UpdateChecker::UpToDate());
    tour.picture("about-latest");
    tour.model.updates.result =
        UpdateChecker::Result(UpdateChecker::Failed{"Couldn't check for updates: Host not found"});
    tour.resize(tour.window.minimumSize());
    tour.picture("about-failed-narrow");
}

void showOffers(Tour& tour)
{
    tour.preferences.setValue("support.offeredAfterFirstResult", {});
    tour.preferences.setValue("friend.state", {});
    tour.openSample("Report.pdf", 3);
    saveAndWait(tour, "first.pdf");
    tour.picture("offers-support");
    tour.press("Bitcoin");
    tour.press("Copy Address", "offers-address-copied");
    Tour::check(QGuiApplication::clipboard()->text() == "example-bitcoin-address",
                "the address is on the clipboard");
    tour.press("Not Now");
    Tour::check(!tour.model.support.value(), "the offer has gone");

    tour.model.support = SupportPrompt::TellAFriend;
    tour.picture("offers-friend");
    tour.press("Share…");
    Tour::check(
        tour.workspace.openedLinks.value(0).toString().startsWith("mailto:?subject=Folvane&body=Folvane"),
        "a mail with the message");
    tour.press("Copy Message", "offers-friend-told");
    Tour::check(tour.preferences.value("friend.state").toString() == "done",
                "who told a friend is not asked again");
    tour.press("Done");

    tour.preferences.setValue("support.offeredAfterFirstResult", {});
    tour.save("second.pdf", [&tour] { tour.press("Save As…"); });
    tour.press("Split");
    tour.clock.advance(std::chrono::seconds(1));
    tour.picture("offers-not-over-a-sheet");
    Tour::check(!tour.model.support.value(), "no request comes over another sheet");
    tour.keys({Qt::Key_Escape});
}

} // namespace folvane
