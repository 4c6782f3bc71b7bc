#include "tour/Tour.h"

#include "documents/currentFile.h"
#include "support/tools.h"
#include "tour/TourFailed.h"
#include "tour/waiting.h"
#include "tour/windowPicture.h"

#include <QApplication>
#include <QMenu>
#include <QMenuBar>

#include <cstdio>
#include <utility>

namespace folvane {

namespace {

constexpr int framesOfAMoment = 12;
constexpr int quickly = 85; // as the quality of a PNG: the least compression that is worth its time

QString plain(QString title)
{
    return title.section(u'\t', 0, 0).remove(u'&');
}

QAction* entryOf(const QWidget& menu, const QString& name)
{
    for (QAction* action : menu.actions()) {
        if (plain(action->text()) == name)
            return action;
    }
    throw TourFailed(QStringLiteral("There is no menu entry “%1”.").arg(name));
}

} // namespace

Tour::Tour(TourOptions options) : m_options(std::move(options))
{
    if (!QDir().mkpath(m_options.folder.path()))
        throw TourFailed(QStringLiteral("%1 cannot be made.").arg(m_options.folder.path()));
}

void Tour::play(const TourStep& step)
{
    const int before = m_pictures;
    m_stage = std::make_unique<Stage>();
    m_hand = std::make_unique<Hand>(window());
    waitUntilStill();
    m_watchdog.start();
    try {
        step.play(*this);
    } catch (const std::exception& error) {
        take("failed-" + QString(step.name));
        throw TourFailed(QStringLiteral("%1: %2").arg(step.name, error.what()));
    }
    m_watchdog.pause();
    std::printf("%-12s %2d pictures, longest gap of the interface thread %5.1f ms\n", step.name,
                m_pictures - before, m_watchdog.longest().count());
    std::fflush(stdout);
    m_hand.reset();
    m_stage.reset();
}

QUrl Tour::sample(const QString& name, int pages, Paper paper, const QString& word)
{
    const Unwatched unwatched(m_watchdog);
    return makeSample(path(name), pages, paper, word);
}

void Tour::picture(const QString& name)
{
    if (name.isEmpty())
        return;
    if (grid().isVisible())
        waitForPages();
    waitUntilStill();
    take(name);
}

void Tour::movingPicture(const QString& name)
{
    waitForFrames(framesOfAMoment);
    take(name);
}

// What the tour itself takes for its pictures is no gap of the program's.
void Tour::take(const QString& name)
{
    const Unwatched unwatched(m_watchdog);
    const QString file = QStringLiteral("%1-%2.png").arg(++m_pictures, 2, 10, QLatin1Char('0')).arg(name);
    const QString path = m_options.folder.filePath(file);
    check(windowPicture(window(), m_hand->dragged()).save(path, "PNG", quickly), path + " can be written");
}

void Tour::check(bool holds, const QString& expected)
{
    if (!holds)
        throw TourFailed("This does not hold: " + expected);
}

void Tour::wait(const QString& what, const std::function<bool()>& condition)
{
    waitUntil(what, condition);
}

void Tour::waitForPages()
{
    wait("The coming of all page pictures", [this] { return grid().isComplete(); });
}

void Tour::waitUntilIdle()
{
    wait("The end of the job", [this] { return !model().busy.value(); });
}

void Tour::press(const QString& name, const QString& shot)
{
    m_hand->press(name);
    picture(shot);
}

void Tour::openMenu(const QString& name)
{
    QMenuBar& bar = *window().menuBar();
    m_hand->click(bar.mapToGlobal(bar.actionGeometry(entryOf(bar, name)).center()));
    waitUntil(QStringLiteral("The opening of the menu “%1”").arg(name),
              [] { return QApplication::activePopupWidget() != nullptr; });
}

void Tour::choose(const QString& entry, const QString& shot)
{
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    check(menu, QStringLiteral("a menu is open to choose “%1” from").arg(entry));
    m_hand->click(menu->mapToGlobal(menu->actionGeometry(entryOf(*menu, entry)).center()));
    picture(shot);
}

void Tour::type(const QString& text, const QString& shot)
{
    m_hand->type(text);
    picture(shot);
}

void Tour::keys(std::initializer_list<Qt::Key> keys, const QString& shot)
{
    for (const Qt::Key key : keys)
        m_hand->key(key);
    picture(shot);
}

void Tour::resize(const QSize& size)
{
    window().resize(size);
    wait("The resizing of the window", [this, size] { return window().size() == size; });
}

void Tour::openBy(const QString& button, const QList<QUrl>& files)
{
    m_stage->panels.openAnswers.enqueue(files);
    press(button);
}

OpenFilePtr Tour::open(const QList<QUrl>& files)
{
    const OpenFilePtr before = shown();
    openBy("Open…", files);
    m_hand->hover(window().mapToGlobal(QPoint(window().width() / 2, window().height() - 4)));
    wait("The opening of " + files.first().fileName(), [&] { return shown() && shown() != before; });
    return shown();
}

OpenFilePtr Tour::openSample(const QString& name, int pages, Paper paper)
{
    return open({sample(name, pages, paper)});
}

void Tour::askForPassword(const QUrl& file)
{
    openBy("Open…", {file});
    wait("The question for a password", [this] { return model().passwordRequest.value().has_value(); });
}

void Tour::unlock(const QString& password)
{
    type(password);
    press("Open");
    wait("The opening of the locked file", [this] { return shown() && shown()->password; });
}

void Tour::turn(const QString& button)
{
    press(button);
    wait("The turning", [this] { return shown()->isEdited.value(); });
}

QString Tour::save(const QString& name, const std::function<void()>& by)
{
    m_stage->panels.saveAnswers.enqueue(QUrl::fromLocalFile(path(name)));
    by();
    wait("The question where to save", [this] { return m_stage->panels.saveAnswers.isEmpty(); });
    waitUntilIdle();
    return path(name);
}

QString Tour::writeInto(const QString& folder, const std::function<void()>& by)
{
    check(QDir().mkpath(path(folder)), "there is a folder to write into");
    m_stage->panels.folderAnswers.enqueue(QUrl::fromLocalFile(path(folder)));
    by();
    wait("The question for a folder", [this] { return m_stage->panels.folderAnswers.isEmpty(); });
    waitUntilIdle();
    return path(folder);
}

void Tour::letToastGo()
{
    m_stage->clock.advance(std::chrono::minutes(1));
}

OpenFilePtr Tour::shown() const
{
    return currentFile(m_stage->model);
}

QPoint Tour::pagePoint(int row)
{
    const QPoint point = m_stage->pagePoint(row);
    const QWidget& pages = *grid().viewport();
    check(pages.rect().contains(pages.mapFromGlobal(point)),
          QStringLiteral("page %1 is on screen").arg(row + 1));
    return point;
}

void Tour::select(const QList<int>& rows)
{
    for (const int row : rows)
        m_hand->click(pagePoint(row), row == rows.first() ? Qt::NoModifier : Qt::ControlModifier);
}

QStringList checkedTexts(const QString& path)
{
    const QByteArray faults = faultsOf(path);
    Tour::check(faults.isEmpty(), QStringLiteral("qpdf finds no fault in %1; it says %2").arg(path, faults));
    QStringList pages = textOf(path).split(u'\f');
    pages.removeLast(); // after the form feed of the last page
    for (QString& page : pages)
        page = page.simplified();
    return pages;
}

} // namespace folvane
