#include "tour/Tour.h"

#include "documents/currentFile.h"
#include "support/tools.h"
#include "tour/accessibleTree.h"
#include "tour/windowPicture.h"

#include <QMenu>

#include <cstdio>
#include <utility>

namespace folvane {

namespace {

constexpr int framesOfAMoment = 12;
constexpr int quickly = 85; // as the quality of a PNG: the least compression that is worth its time

} // namespace

Tour::Tour(TourOptions given, int pictures) : options(std::move(given)), m_pictures(pictures)
{
    waitUntilStill();
    watchdog.start();
}

int Tour::play(const char* name, void (*step)(Tour& tour))
{
    const int before = m_pictures;
    try {
        step(*this);
    } catch (const std::exception& error) {
        take(QStringLiteral("failed-%1").arg(name));
        throw TourFailed(QStringLiteral("%1: %2").arg(name, error.what()));
    }
    watchdog.pause();
    std::printf("%-12s %2d pictures, longest gap of the interface thread %5.1f ms\n", name,
                m_pictures - before, watchdog.longest().count());
    std::fflush(stdout);
    return m_pictures;
}

QUrl Tour::sample(const QString& name, int pages, Paper paper, const QString& word)
{
    const auto unwatched = watchdog.lookAway();
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
    checkScreen(name);
}

void Tour::movingPicture(const QString& name)
{
    waitForFrames(framesOfAMoment);
    take(name);
    checkScreen(name);
}

// What the tour itself takes for its pictures is no gap of the program's.
void Tour::take(const QString& name)
{
    const auto unwatched = watchdog.lookAway();
    const QString file = QStringLiteral("%1-%2.png").arg(++m_pictures, 2, 10, QLatin1Char('0')).arg(name);
    const QString path = options.folder.filePath(file);
    check(windowPicture(window, hand.dragged()).save(path, "PNG", quickly), path + " can be written");
}

// What holds for every screen.
void Tour::checkScreen(const QString& name)
{
    const auto unwatched = watchdog.lookAway();
    check(allHaveNames(hand.top()), QStringLiteral("screen readers have a name for all in “%1”").arg(name));
    if (const auto* menu = qobject_cast<QMenu*>(&hand.top())) {
        const QRect first = menu->actionGeometry(menu->actions().first()).translated(menu->pos());
        check(window.geometry().contains(first),
              QStringLiteral("the menu in “%1” is in the window").arg(name));
    }
}

void Tour::check(bool holds, const QString& expected)
{
    if (!holds)
        throw TourFailed("This does not hold: " + expected);
}

void Tour::waitForPages()
{
    waitUntil("The coming of all page pictures", [this] { return grid().isComplete(); });
}

void Tour::press(const QString& name, const QString& shot)
{
    hand.press(name);
    picture(shot);
}

void Tour::type(const QString& text, const QString& shot)
{
    hand.type(text);
    picture(shot);
}

void Tour::keys(std::initializer_list<Qt::Key> keys, const QString& shot)
{
    for (const Qt::Key key : keys)
        hand.key(key);
    picture(shot);
}

void Tour::resize(const QSize& size)
{
    window.resize(size);
    waitUntil("The resizing of the window", [this, size] { return window.size() == size; });
}

void Tour::openBy(const QString& button, const QList<QUrl>& files)
{
    panels.openAnswers.enqueue(files);
    press(button);
}

OpenFilePtr Tour::open(const QList<QUrl>& files)
{
    const OpenFilePtr before = currentFile(model);
    openBy("Open…", files);
    hand.hover(window.mapToGlobal(QPoint(window.width() / 2, window.height() - 4)));
    waitUntil("The opening of " + files.first().fileName(),
              [&] { return currentFile(model) && currentFile(model) != before; });
    return currentFile(model);
}

OpenFilePtr Tour::openSample(const QString& name, int pages, Paper paper)
{
    return open({sample(name, pages, paper)});
}

void Tour::askForPassword(const QUrl& file)
{
    openBy("Open…", {file});
    waitUntil("The question for a password", [this] { return model.passwordRequest.value().has_value(); });
}

void Tour::unlock(const QString& password)
{
    type(password);
    press("Open");
    waitUntil("The opening of the locked file",
              [this] { return currentFile(model) && currentFile(model)->password; });
}

void Tour::turn(const QString& button)
{
    press(button);
    waitUntil("The turning", [this] { return currentFile(model)->isEdited.value(); });
}

QString Tour::save(const QString& name, const std::function<void()>& by)
{
    return answer(panels.saveAnswers, name, by);
}

QString Tour::writeInto(const QString& name, const std::function<void()>& by)
{
    check(QDir().mkpath(path(name)), "there is a folder to write into");
    return answer(panels.folderAnswers, name, by);
}

QString Tour::answer(QQueue<std::optional<QUrl>>& panel, const QString& name, const std::function<void()>& by)
{
    panel.enqueue(QUrl::fromLocalFile(path(name)));
    by();
    waitUntil("The question for a place", [&panel] { return panel.isEmpty(); });
    waitUntil("The end of the job", [this] { return !model.busy.value(); });
    return path(name);
}

void Tour::emptyLibrary()
{
    const auto unwatched = watchdog.lookAway();
    const QList<StampRecord> all = model.stamps.stamps;
    for (const StampRecord& record : all)
        model.stamps.remove(record.id);
}

QPoint Tour::pagePoint(int row)
{
    const QPoint point = Stage::pagePoint(row);
    const QWidget& pages = *grid().viewport();
    check(pages.rect().contains(pages.mapFromGlobal(point)),
          QStringLiteral("page %1 is on screen").arg(row + 1));
    return point;
}

void Tour::select(const QList<int>& rows)
{
    for (const int row : rows)
        hand.click(pagePoint(row), row == rows.first() ? Qt::NoModifier : Qt::ControlModifier);
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
