#pragma once

#include "tour/Stage.h"
#include "tour/Watchdog.h"
#include "tour/sampleFiles.h"
#include "tour/waiting.h"

#include <QDir>

#include <initializer_list>

namespace folvane {

struct TourOptions {
    QDir folder; ///< for the pictures
    int manyPages = 5000;
};

/// A person at the window, with a camera: what the steps are written with. Everything that does not come out as told
/// throws TourFailed. Whatever takes the name of a picture leaves one when it is done.
class Tour : public Stage {
public:
    /// The first picture gets the number behind this one.
    Tour(TourOptions options, int pictures);

    /// Plays the step, prints what it came to and gives the number of the last picture. Throws what the step throws; a
    /// picture of how the window looked then is left.
    int play(const char* name, void (*step)(Tour& tour));

    /// makeSample() there, out of the watchdog's sight.
    QUrl sample(const QString& name, int pages, Paper paper = Paper::Upright,
                const QString& word = "Chapter");

    /// A picture once the window has come to rest.
    void picture(const QString& name);
    /// A picture of what never comes to rest, once it has moved for a moment.
    void movingPicture(const QString& name);

    static void check(bool holds, const QString& expected);
    void waitForPages();

    /// Clicks the control, or the entry of a menu, with this name in what is on top.
    void press(const QString& name, const QString& picture = {});
    void type(const QString& text, const QString& picture = {});
    void keys(std::initializer_list<Qt::Key> keys, const QString& picture = {});
    void resize(const QSize& size);

    /// Presses the button and answers its panel with the files.
    void openBy(const QString& button, const QList<QUrl>& files);
    /// Opens the files through the Open… button and its panel, and gives the document that is shown then.
    OpenFilePtr open(const QList<QUrl>& files);
    OpenFilePtr openSample(const QString& name, int pages, Paper paper = Paper::Upright);
    /// Opens a locked file until it asks for its password.
    void askForPassword(const QUrl& file);
    /// Answers that question, and waits for the document.
    void unlock(const QString& password);
    /// The middle of the page, which has to be on screen.
    QPoint pagePoint(int row);
    /// Clicks the pages, given from 0, the second and further ones with Ctrl.
    void select(const QList<int>& rows);
    /// Presses the button that turns pages of a document as yet unedited.
    void turn(const QString& button);

    /// Does what asks for a place, answers with this name, and waits until the job is over; gives its path.
    QString save(const QString& name, const std::function<void()>& by);
    /// The same with a new folder.
    QString writeInto(const QString& name, const std::function<void()>& by);
    /// Takes the stamps of earlier steps out of the library that all share.
    void emptyLibrary();
    void letToastGo() { clock.advance(std::chrono::minutes(1)); }

    const TourOptions options;
    Watchdog watchdog;

private:
    void take(const QString& picture);
    void checkScreen(const QString& name);
    QString answer(QQueue<std::optional<QUrl>>& panel, const QString& name, const std::function<void()>& by);

    int m_pictures;
};

/// The text of each page of a written file, by other eyes than ours; fails when qpdf finds a fault in it.
QStringList checkedTexts(const QString& path);

} // namespace folvane
