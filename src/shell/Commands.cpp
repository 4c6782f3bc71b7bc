#include "shell/Commands.h"

#include "platform/spawn.h"
#include "shell/DocumentView.h"
#include "shell/currentFile.h"

#include <QMenu>
#include <QMenuBar>

namespace folvane {

Commands::Commands(AppModel& model, QMenuBar* bar) : QObject(bar), m_model(model)
{
    fillFileMenu(bar);
    fillPagesMenu(bar);
    m_watches.keep([this] { watchFile(); }, m_model.destination, m_model.files);
    m_watches.keep([this] { refresh(); }, m_model.busy);
}

void Commands::fillFileMenu(QMenuBar* bar)
{
    QMenu* menu = bar->addMenu(tr("&File"));
    const auto add = [menu](const QString& title, const QList<QKeySequence>& keys, auto action) {
        QAction* entry = menu->addAction(title);
        entry->setShortcuts(keys);
        connect(entry, &QAction::triggered, menu, action);
        return entry;
    };
    add(tr("Open…"), {QKeySequence(Qt::CTRL | Qt::Key_O)}, [this] { spawn(m_model.chooseAndOpen()); });
    m_insert = add(tr("Insert Pages from Files…"), {}, [this] { spawn(chooseAndInsert(&m_model, m_file)); });
    menu->addSeparator();
    m_saveAs = add(tr("Save As…"),
                   {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S), QKeySequence(Qt::CTRL | Qt::Key_S)},
                   [this] { spawn(m_model.saveAs(m_file)); });
    m_extract = add(tr("Extract All Pages…"), {}, [this] { spawn(m_model.extract(m_file)); });
    m_closeFile =
        add(tr("Close File"), {QKeySequence(Qt::CTRL | Qt::Key_W)}, [this] { m_model.requestClose(m_file); });
    menu->addSeparator();
    add(tr("Quit"), {QKeySequence(Qt::CTRL | Qt::Key_Q)}, [this] { emit quitRequested(); });
}

void Commands::fillPagesMenu(QMenuBar* bar)
{
    QMenu* menu = bar->addMenu(tr("&Pages"));
    const auto turn = [this](bool clockwise) { m_model.turn(m_file, m_file->targetIDs(), clockwise); };
    m_turns = {menu->addAction(tr("Rotate Left"), this, [turn] { turn(false); }),
               menu->addAction(tr("Rotate Right"), this, [turn] { turn(true); })};
    m_delete = menu->addAction(tr("Delete Pages"), this,
                               [this] { m_model.deletePages(m_file, m_file->selection.value()); });
}

void Commands::watchFile()
{
    m_file = currentFile(m_model);
    m_fileWatches.clear();
    if (m_file)
        m_fileWatches.keep([this] { refresh(); }, m_file->selection);
    else
        refresh();
}

void Commands::refresh()
{
    const bool busy = m_model.busy.value().has_value();
    m_insert->setEnabled(bool(m_file));
    m_saveAs->setEnabled(m_file && !busy);
    m_extract->setEnabled(m_file && !busy);
    m_extract->setText(m_file ? extractTitle(*m_file) : tr("Extract All Pages…"));
    m_closeFile->setEnabled(bool(m_file));
    for (QAction* turn : m_turns)
        turn->setEnabled(bool(m_file));
    m_delete->setEnabled(m_file && !m_file->selection.value().isEmpty());
}

} // namespace folvane
