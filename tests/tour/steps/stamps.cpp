#include "stamps/ReadyStampRenderer.h"
#include "tour/steps.h"

#include <QClipboard>
#include <QGuiApplication>

namespace folvane {

namespace {

void keep(Tour& tour, const QString& word, const QString& name, StampInk ink = StampInk::Red)
{
    const auto unwatched = tour.watchdog.lookAway();
    tour.model.stamps.add(*ReadyStampRenderer::render(word, "Nov 23, 2026", ink), name);
}

QStringList names(Tour& tour)
{
    QStringList all;
    for (const StampRecord& record : tour.model.stamps.stamps.value())
        all.append(record.name);
    return all;
}

/// Waits for the sheet of a new stamp to have made one, and saves it.
void saveNewStamp(Tour& tour, const QString& picture)
{
    waitUntil("The stamp", [&tour] { return tour.hand.finds("Save"); });
    tour.picture(picture);
    tour.press("Save");
}

QPoint middle(Tour& tour)
{
    return tour.window.mapToGlobal(tour.window.rect().center());
}

void showWays(Tour& tour)
{
    tour.press("Signatures & Stamps", "stamps-empty");
    QGuiApplication::clipboard()->clear();
    tour.press("New Signature or Stamp", "stamps-menu");
    Tour::check(!tour.hand.finds("Paste"), "there is nothing to paste");
    tour.keys({Qt::Key_Escape});

    const QUrl photo = makePicture(tour.path("Hills.PNG"));
    const QUrl document = tour.sample("Letter.pdf", 1);
    tour.hand.dragFiles({document, photo}, middle(tour), [&tour] { tour.picture("stamps-picture-over"); });
    saveNewStamp(tour, "stamps-dropped");
    Tour::check(names(tour).size() == 1, "the dropped picture is a stamp");
    tour.hand.dragFiles({document}, middle(tour), [&tour] { tour.picture("stamps-document-over"); });

    tour.panels.openAnswers.enqueue({photo});
    tour.press("New Signature or Stamp");
    tour.press("From an Image File…");
    saveNewStamp(tour, "stamps-chosen");
    QGuiApplication::clipboard()->setImage(QImage(photo.toLocalFile()));
    tour.press("New Signature or Stamp");
    tour.press("Paste");
    saveNewStamp(tour, "stamps-pasted");
    tour.hand.key(Qt::Key_V, Qt::ControlModifier);
    saveNewStamp(tour, "stamps-pasted-by-keys");
    Tour::check(names(tour).size() == 4, "what was chosen and pasted are stamps");
    Tour::check(tour.model.files.value().isEmpty(), "nothing that was dropped on stamps is opened");
}

void showChanges(Tour& tour)
{
    keep(tour, "PAID", "Paid");
    keep(tour, "RECEIVED AND CHECKED", "Received by the committee for the copper harbour and its lanterns");
    keep(tour, "APPROVED", "Approved", StampInk::Blue);
    tour.picture("stamps-several");
    tour.hand.tabTo(names(tour).first());
    tour.keys({Qt::Key_End}, "stamps-by-keys");
    tour.keys({Qt::Key_F2}, "stamps-rename");
    tour.type("Signed");
    tour.keys({Qt::Key_Return, Qt::Key_F2});
    tour.type("  ");
    tour.keys({Qt::Key_Return});
    Tour::check(names(tour).last() == "Signed", "a name of blanks changes nothing");
    tour.press("Rename or delete “Paid”", "stamps-card-menu");
    tour.press("Delete…", "stamps-delete");
    tour.keys({Qt::Key_Return});
    Tour::check(names(tour).contains("Paid"), "Return deletes nothing");
    tour.hand.key(Qt::Key_F10, Qt::ShiftModifier);
    tour.press("Rename…");
    tour.keys({Qt::Key_Escape, Qt::Key_Right, Qt::Key_Delete}, "stamps-delete-long-name");
    tour.press("Delete", "stamps-deleted");
    Tour::check(names(tour).last() == "Signed" && names(tour).size() == 6, "the long one has gone");
    tour.keys({Qt::Key_F2});
    tour.type(QStringLiteral("Without end ").repeated(50));
    tour.keys({Qt::Key_Return, Qt::Key_Delete}, "stamps-delete-endless-name");
    tour.keys({Qt::Key_Return, Qt::Key_F2});
    tour.type("Last");
    tour.keys({Qt::Key_Return});
    Tour::check(names(tour).last() == "Last", "the keyboard went to the stamp that came there");
}

void showMany(Tour& tour)
{
    for (qsizetype n = names(tour).size(); n < 100; ++n)
        keep(tour, QStringLiteral("NO. %1").arg(n), QStringLiteral("Number %1").arg(n), StampInk::Black);
    tour.picture("stamps-many");
    tour.keys({Qt::Key_End}, "stamps-many-end");
    tour.resize(tour.window.minimumSize());
    tour.picture("stamps-many-narrow");
}

} // namespace

void showStamps(Tour& tour)
{
    tour.emptyLibrary();
    showWays(tour);
    showChanges(tour);
    showMany(tour);
    tour.emptyLibrary();
}

} // namespace folvane
