#include "shell/sidebar/FileList.h"

#include "documents/currentFile.h"
#include "shell/sidebar/FileRow.h"
#include "shell/sidebar/fileListAccessibility.h"

#include <QKeyEvent>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>

namespace folvane {

namespace {

constexpr int gap = 2;
constexpr int fewestRows = 2; // that stay in sight however low the window is

} // namespace

FileList::FileList(AppModel& model, QWidget* parent) : PlainScrollArea(parent), m_model(model)
{
    installFileListAccessibility();
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    auto* rows = new QWidget(this);
    m_column = new QVBoxLayout(rows);
    m_column->setContentsMargins(0, 0, 0, 0);
    m_column->setSpacing(gap);
    m_column->setAlignment(Qt::AlignTop);
    setPage(rows);
    rows->setAccessibleName(tr("Files"));
    // New rows have their places only once the list has scrolled room for them.
    connect(verticalScrollBar(), &QScrollBar::rangeChanged, this, [this] {
        if (FileRow* row = currentRow())
            ensureWidgetVisible(row, 0, 0);
    });
    m_watches.keep([this] { showFiles(); }, m_model.files);
    m_watches.keep([this] { markCurrent(); }, m_model.files, m_model.destination);
}

QSize FileList::sizeHint() const
{
    return widget()->sizeHint();
}

QSize FileList::minimumSizeHint() const
{
    const int row = m_rows.isEmpty() ? 0 : m_rows.first()->sizeHint().height() + gap;
    return {0, std::min(sizeHint().height(), fewestRows * row)};
}

void FileList::showFiles()
{
    const QList<OpenFilePtr> files = m_model.files.value();
    m_rows.removeIf([&files](FileRow* row) {
        if (files.contains(row->file()))
            return false;
        row->hide();
        row->deleteLater(); // it may be what asked for the closing
        return true;
    });
    for (const OpenFilePtr& file : files) {
        if (std::ranges::none_of(m_rows, [&file](FileRow* row) { return row->file() == file; }))
            m_rows.append(addRow(file));
    }
    setVisible(!m_rows.isEmpty());
    updateGeometry();
}

FileRow* FileList::addRow(const OpenFilePtr& file)
{
    auto* row = new FileRow(m_model, file);
    row->installEventFilter(this);
    connect(row, &FileRow::clicked, this, &FileList::chosen);
    m_column->addWidget(row);
    row->show(); // until then, which would be later by itself, the height of the list does without it
    return row;
}

void FileList::setTabPredecessor(QWidget* before)
{
    m_before = before;
    markCurrent();
}

FileRow* FileList::currentRow() const
{
    const auto found = std::ranges::find_if(m_rows, &FileRow::isCurrent);
    return found == m_rows.end() ? nullptr : *found;
}

void FileList::markCurrent()
{
    const OpenFilePtr shown = currentFile(m_model);
    for (FileRow* row : m_rows)
        row->setCurrent(row->file() == shown);
    FileRow* current = currentRow();
    if (current)
        ensureWidgetVisible(current, 0, 0);
    if (!m_rows.isEmpty())
        stopTabAt(current ? current : m_rows.first());
}

void FileList::stopTabAt(FileRow* row)
{
    for (FileRow* each : m_rows)
        each->setFocusPolicy(each == row ? Qt::TabFocus : Qt::NoFocus);
    if (m_before)
        setTabOrder(m_before, row); // has an effect only on what the Tab key reaches
}

bool FileList::eventFilter(QObject* watched, QEvent* event)
{
    auto* row = qobject_cast<FileRow*>(watched);
    if (row && event->type() == QEvent::FocusIn)
        ensureWidgetVisible(row, 0, 0);
    else if (row && event->type() == QEvent::KeyPress)
        return walk(*row, static_cast<QKeyEvent*>(event)->key());
    return PlainScrollArea::eventFilter(watched, event);
}

bool FileList::walk(FileRow& from, int key)
{
    const qsizetype last = m_rows.size() - 1;
    const qsizetype at = m_rows.indexOf(&from);
    const auto goTo = [this](qsizetype row) {
        stopTabAt(m_rows[row]);
        m_rows[row]->setFocus(Qt::TabFocusReason);
        return true;
    };
    switch (key) {
    case Qt::Key_Up: return goTo(std::max<qsizetype>(at - 1, 0));
    case Qt::Key_Down: return goTo(std::min(at + 1, last));
    case Qt::Key_Home: return goTo(0);
    case Qt::Key_End: return goTo(last);
    default: return false;
    }
}

} // namespace folvane
