#include "shell/Commands.h"

#include "controls/style/mnemonics.h"
#include "documents/addToMerge.h"
#include "documents/currentFile.h"
#include "platform/tasks/spawn.h"
#include "shell/DocumentBar.h"

#include <QMenu>
#include <QMenuBar>

namespace folvane {

namespace {

template <typename Action>
QAction* add(QMenu* menu, const QString& title, const QList<QKeySequence>& keys, Action action)
{
    QAction* entry = menu->addAction(title);
    entry->setShortcuts(keys);
    QObject::connect(entry, &QAction::triggered, menu, action);
    return entry;
}

// Keys that belong to the page grid alone are shown beside the title, and bound there.
QString withGridKey(const QString& title, const QKeySequence& key)
{
    return title + QLatin1Char('\t') + key.toString(QKeySequence::NativeText);
}

} // namespace

Commands::Commands(AppModel& model, QMenuBar* bar) : QObject(bar), m_model(model)
{
    fillFileMenu(bar->addMenu(tr("&File")));
    fillEditMenu(bar->addMenu(tr("&Edit")));
    fillPagesMenu(bar->addMenu(tr("&Pages")));
    fillToolsMenu(bar->addMenu(tr("&Tools")));
    m_watches.keep([this] { watchFile(); }, m_model.destination, m_model.files);
    m_watches.keep([this] { refresh(); }, m_model.busy, m_model.signingFileID);
}

void Commands::fillFileMenu(QMenu* menu)
{
    add(menu, tr("Open…"), {QKeySequence(Qt::CTRL | Qt::Key_O)}, [this] { spawn(m_model.chooseAndOpen()); });
    menu->addSeparator();
    m_saveAs = add(menu, tr("Save As…"),
                   {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S), QKeySequence(Qt::CTRL | Qt::Key_S)},
                   [this] { spawn(m_model.saveAs(m_file)); });
    m_closeFile = add(menu, tr("Close File"), {}, [this] { m_model.requestClose(m_file); });
    menu->addSeparator();
    add(menu, tr("Close Window"), {QKeySequence(Qt::CTRL | Qt::Key_W)},
        [this] { emit closeWindowRequested(); });
    add(menu, tr("Quit"), {QKeySequence(Qt::CTRL | Qt::Key_Q)}, [this] { emit quitRequested(); });
}

void Commands::fillEditMenu(QMenu* menu)
{
    QAction* all = add(menu, tr("Select All"), {QKeySequence(Qt::CTRL | Qt::Key_A)}, [this] { selectAll(); });
    QAction* none = add(menu, withGridKey(tr("Deselect All"), Qt::Key_Escape), {},
                        [this] { m_file->selection = QSet<QUuid>(); });
    menu->addSeparator();
    QAction* deletion = add(menu, withGridKey(tr("Delete Pages"), Qt::Key_Delete), {},
                            [this] { m_model.deletePages(m_file, m_file->selection.value()); });
    m_onPages += all;
    m_onSelection += {none, deletion};
}

void Commands::fillPagesMenu(QMenu* menu)
{
    const auto turn = [this](bool clockwise) { m_model.turn(m_file, m_file->targetIDs(), clockwise); };
    m_onPages += add(menu, tr("Rotate Left"), {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_R)},
                     [turn] { turn(false); });
    m_onPages += add(menu, tr("Rotate Right"), {QKeySequence(Qt::CTRL | Qt::Key_R)}, [turn] { turn(true); });
    menu->addSeparator();
    m_onSelection += add(menu, withGridKey(tr("Move Back"), Qt::ALT | Qt::Key_Left), {},
                         [this] { emit pagesMoveRequested(-1); });
    m_onSelection += add(menu, withGridKey(tr("Move Forward"), Qt::ALT | Qt::Key_Right), {},
                         [this] { emit pagesMoveRequested(1); });
    m_onSelection += add(menu, withGridKey(tr("Move to Start"), Qt::ALT | Qt::Key_Home), {},
                         [this] { emit pagesMoveRequested(-pageCount()); });
    m_onSelection += add(menu, withGridKey(tr("Move to End"), Qt::ALT | Qt::Key_End), {},
                         [this] { emit pagesMoveRequested(pageCount()); });
    menu->addSeparator();
    m_onPages +=
        add(menu, tr("Insert Pages from Files…"), {}, [this] { spawn(chooseAndInsert(m_model, m_file)); });
    m_extract = add(menu, tr("Extract All Pages…"), {}, [this] { spawn(m_model.extract(m_file)); });
}

void Commands::fillToolsMenu(QMenu* menu)
{
    const auto sheet = [this, menu](const QString& title, FileSheet::Kind kind) {
        m_onFile += add(menu, title, {}, [this, kind] { m_model.sheet = FileSheet{kind, m_file->id}; });
    };
    m_onPages += add(menu, literal(tr("Sign & Stamp")), {}, [this] { signSelected(m_model, *m_file); });
    sheet(tr("Compress"), FileSheet::Kind::Compress);
    sheet(tr("Split"), FileSheet::Kind::Split);
    sheet(tr("Password"), FileSheet::Kind::Password);
    sheet(tr("Export Pages as Images…"), FileSheet::Kind::ExportImages);
    menu->addSeparator();
    m_onFile += add(menu, tr("Add to Merge"), {}, [this] { addToMerge(m_model, *m_file); });
}

int Commands::pageCount() const
{
    return int(m_file->pages.value().size());
}

void Commands::selectAll()
{
    QSet<QUuid> all;
    for (const PageItem& page : m_file->pages.value())
        all.insert(page.id);
    m_file->selection = all;
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

bool Commands::showsGrid() const
{
    return m_model.signingFileID.value() != m_file->id;
}

void Commands::refresh()
{
    const bool busy = m_model.busy.value().has_value();
    const bool changeable = m_file && !busy; // the overlay keeps the mouse away, but not these keys
    const bool onPages = changeable && showsGrid();
    const bool selected = onPages && !m_file->selection.value().isEmpty();
    m_saveAs->setEnabled(changeable);
    m_closeFile->setEnabled(bool(m_file));
    m_extract->setEnabled(onPages);
    m_extract->setText(m_file ? extractTitle(*m_file) : tr("Extract All Pages…"));
    for (QAction* action : m_onFile)
        action->setEnabled(changeable);
    for (QAction* action : m_onPages)
        action->setEnabled(onPages);
    for (QAction* action : m_onSelection)
        action->setEnabled(selected);
}

} // namespace folvane
