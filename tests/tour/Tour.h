#pragma once

#include "tour/Hand.h"
#include "tour/Stage.h"
#include "tour/Watchdog.h"
#include "tour/sampleFiles.h"

#include <QDir>
#include <QTemporaryDir>

#include <initializer_list>
#include <memory>

namespace folvane {

class Tour;

/// One part of the walk, with a window of its own.
struct TourStep {
    const char* name;
    void (*play)(Tour& tour);
};

struct TourOptions {
    QDir folder; ///< for the pictures
    int manyPages = 5000;
    int rounds = 1;    ///< in which the large document is browsed
    QList<QUrl> given; ///< files to show
};

/// A person at the window, with a camera: what the steps are written with. Everything that does not come out as told
/// throws TourFailed. Whatever takes the name of a picture leaves one when it is done.
class Tour {
public:
    explicit Tour(TourOptions options);

    /// Plays the step in a new window and prints what it came to. Throws what the step throws; a picture of how the
    /// window looked then is left.
    void play(const TourStep& step);

    Stage& stage() { return *m_stage; }
    RootView& window() { return m_stage->window; }
    AppModel& model() { return m_stage->model; }
    PageGrid& grid() { return m_stage->grid(); }
    Hand& hand() { return *m_hand; }
    Watchdog& watchdog() { return m_watchdog; }
    const TourOptions& options() const { return m_options; }
    /// A place for a file; all are gone after the tour.
    QString path(const QString& name) const { return m_temporary.filePath(name); }
    /// makeSample() there, out of the watchdog's sight.
    QUrl sample(const QString& name, int pages, Paper paper = Paper::Upright,
                const QString& word = "Chapter");

    /// A picture once the window has come to rest.
    void picture(const QString& name);
    /// A picture of what never comes to rest, once it has moved for a moment.
    void movingPicture(const QString& name);

    static void check(bool holds, const QString& expected);
    static void wait(const QString& what, const std::function<bool()>& condition);
    void waitForPages();
    void waitUntilIdle();

    /// Clicks the control with this name in what is on top.
    void press(const QString& name, const QString& picture = {});
    /// Clicks into the menu bar.
    void openMenu(const QString& name);
    /// Clicks the entry of the open menu.
    void choose(const QString& entry, const QString& picture = {});
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
    OpenFilePtr shown() const;
    QPoint pagePoint(int row);
    /// Clicks the pages, given from 0, the second and further ones with Ctrl.
    void select(const QList<int>& rows);
    /// Presses the button that turns pages of a document as yet unedited.
    void turn(const QString& button);

    /// Does what asks where to save, answers with a file of this name, and waits until the job is over; gives its path.
    QString save(const QString& name, const std::function<void()>& by);
    /// The same with a new folder.
    QString writeInto(const QString& folder, const std::function<void()>& by);
    void letToastGo();

private:
    void take(const QString& picture);

    const TourOptions m_options;
    QTemporaryDir m_temporary;
    Watchdog m_watchdog;
    std::unique_ptr<Stage> m_stage;
    std::unique_ptr<Hand> m_hand;
    int m_pictures = 0;
};

/// The text of each page of a written file, by other eyes than ours; fails when qpdf finds a fault in it.
QStringList checkedTexts(const QString& path);

} // namespace folvane
