// Measures inside the real window what cannot be seen from outside, and tells it as one JSON object:
//     folvane-window-bench first-row FILE COLOUR   time until the first row of FILE is painted, its pages having a
//                                                  square of the colour in their middle
//     folvane-window-bench saving FILE TO          the longest gap of the interface thread while FILE is saved

#include "tellMeasured.h"

#include "platform/tasks/spawn.h"
#include "shell/DocumentView.h"
#include "shell/pageGrid/PageGrid.h"
#include "tour/Stage.h"
#include "tour/Watchdog.h"
#include "tour/waiting.h"

#include <QTimer>

namespace {

using namespace folvane;
using Time = std::chrono::steady_clock;

constexpr int colourTolerance = 12; // of 255, in each channel

/// Notes when the grid has painted the pictures of its whole first row.
class FirstRow : public QObject {
public:
    FirstRow(PageGrid& grid, const QColor& mark) : m_grid(grid), m_mark(mark)
    {
        grid.viewport()->installEventFilter(this);
    }

    std::optional<Time::time_point> painted() const { return m_painted; }
    int pages() const { return m_pages; }
    /// Of the time before: not the program's.
    Time::duration spentLooking() const { return m_spentLooking; }

protected:
    // The filter stands before the painting; what follows it is looked at when the event loop runs next.
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint && !m_looks && !m_painted)
            QTimer::singleShot(0, this, [this] { look(Time::now()); });
        return false;
    }

private:
    void look(Time::time_point now)
    {
        m_looks = true; // looking paints as well
        if (isPainted())
            m_painted = now;
        else
            m_spentLooking += Time::now() - now;
        m_looks = false;
    }

    bool isPainted()
    {
        const QAbstractItemModel& pages = *m_grid.model();
        const int top = m_grid.visualRect(pages.index(0, 0)).center().y();
        m_pages = 0;
        while (m_pages < pages.rowCount() && m_grid.visualRect(pages.index(m_pages, 0)).center().y() == top) {
            if (!isMarked(m_grid.visualRect(pages.index(m_pages, 0)).center()))
                return false;
            ++m_pages;
        }
        return m_pages > 0;
    }

    bool isMarked(const QPoint& point)
    {
        const QColor seen = m_grid.viewport()->grab(QRect(point, QSize(1, 1))).toImage().pixelColor(0, 0);
        return std::abs(seen.red() - m_mark.red()) < colourTolerance
               && std::abs(seen.green() - m_mark.green()) < colourTolerance
               && std::abs(seen.blue() - m_mark.blue()) < colourTolerance;
    }

    PageGrid& m_grid;
    const QColor m_mark;
    std::optional<Time::time_point> m_painted;
    Time::duration m_spentLooking{0};
    int m_pages = 0;
    bool m_looks = false;
};

double milliseconds(Time::duration time)
{
    return std::chrono::duration<double, std::milli>(time).count();
}

QJsonObject measureFirstRow(Stage& stage, const QUrl& file, const QColor& mark)
{
    FirstRow row(stage.window.documentView().grid(), mark);
    const Time::time_point start = Time::now();
    std::optional<Time::time_point> opened;
    const auto onOpened = stage.model.files.addNotifier([&opened] { opened = Time::now(); });
    spawn(stage.model.open({file}));
    waitUntil(QStringLiteral("The painting of the first row"), [&row] { return row.painted().has_value(); });
    return {{QStringLiteral("ms"), milliseconds(*row.painted() - start)},
            {QStringLiteral("opened"), milliseconds(*opened - start)},
            {QStringLiteral("looking"), milliseconds(row.spentLooking())},
            {QStringLiteral("pages"), row.pages()}};
}

QJsonObject measureSaving(Stage& stage, const QUrl& file, const QUrl& to)
{
    spawn(stage.model.open({file}));
    waitUntil(QStringLiteral("The opening"), [&stage] { return stage.model.files.value().size() == 1; });
    waitUntilStill();
    Watchdog watchdog;
    watchdog.start();
    const Time::time_point start = Time::now();
    stage.panels.saveAnswers.enqueue(to);
    spawn(stage.model.saveAs(stage.model.files.value().first()));
    waitUntil(QStringLiteral("The saving"), [&stage] { return stage.model.toast.value().has_value(); });
    const Time::time_point end = Time::now();
    watchdog.pause();
    return {{QStringLiteral("gap"), watchdog.longest().count()},
            {QStringLiteral("ms"), milliseconds(end - start)}};
}

QJsonObject measure(const QStringList& words)
{
    Stage stage;
    waitUntilStill();
    const QUrl file = QUrl::fromLocalFile(words[2]);
    if (words[1] == QLatin1String("first-row"))
        return measureFirstRow(stage, file, QColor(words[3]));
    return measureSaving(stage, file, QUrl::fromLocalFile(words[3]));
}

} // namespace

int main(int argc, char** argv)
{
    const auto fit = [](const QStringList& words) {
        return words.size() == 4 && QStringList{"first-row", "saving"}.contains(words[1]);
    };
    return tellMeasured(argc, argv, "folvane-window-bench first-row FILE COLOUR | saving FILE TO", fit,
                        measure);
}
