#include "shell/SidebarView.h"

#include "controls/BrandMark.h"
#include "controls/SectionHeader.h"
#include "controls/TextLabel.h"
#include "controls/Theme.h"
#include "controls/appearance.h"
#include "platform/spawn.h"
#include "shell/FileRow.h"
#include "shell/currentFile.h"

#include <QHBoxLayout>
#include <QScrollArea>
#include <QVBoxLayout>

#include <algorithm>

namespace folvane {

namespace {

QWidget* makeHeader(const QString& text, QWidget* parent)
{
    auto* header = new SectionHeader(text, parent);
    header->setContentsMargins(10, 14, 0, 4);
    return header;
}

QLayout* makeBrand(QWidget* parent)
{
    auto* words = new QVBoxLayout;
    words->setSpacing(0);
    words->addWidget(
        new TextLabel(SidebarView::tr("Folvane"), interfaceFont(12, Weight::SemiBold), theme::text, parent));
    words->addWidget(new TextLabel(SidebarView::tr("by Merrowlight Apps"), interfaceFont(10),
                                   theme::secondaryText, parent));
    auto* row = new QHBoxLayout;
    row->setContentsMargins(12, 12, 12, 12);
    row->setSpacing(8);
    row->addWidget(new BrandMark(28, parent), 0, Qt::AlignVCenter);
    row->addLayout(words, 1);
    return row;
}

} // namespace

SidebarView::SidebarView(AppModel& model, QWidget* parent) : QWidget(parent), m_model(model)
{
    QPalette colors = palette();
    colors.setColor(QPalette::Window, theme::chrome);
    setPalette(colors);
    setAutoFillBackground(true);
    auto* list = new QWidget(this);
    m_home = new SidebarRow(Icon::Home, tr("Home"), list);
    m_open = new SidebarRow(Icon::Add, tr("Open…"), list);
    m_open->setTitleColor(theme::accentDeep);
    m_merge = new SidebarRow(Icon::Layers, tr("Merge PDFs"), list);
    m_rows = new QVBoxLayout;
    m_rows->setSpacing(2);

    auto* column = new QVBoxLayout(list);
    column->setContentsMargins(10, 12, 10, 12);
    column->setSpacing(2);
    column->addWidget(m_home);
    column->addWidget(makeHeader(tr("Files"), list));
    column->addLayout(m_rows);
    column->addWidget(m_open);
    column->addWidget(makeHeader(tr("Tools"), list));
    column->addWidget(m_merge);
    column->addStretch();

    auto* scroll = new QScrollArea(this);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->setWidget(list);
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->setSpacing(0);
    outer->addWidget(scroll);
    outer->addLayout(makeBrand(this));

    connect(m_home, &SidebarRow::clicked, this, [this] { m_model.destination = Destination(); });
    connect(m_open, &SidebarRow::clicked, this, [this] { spawn(m_model.chooseAndOpen()); });
    connect(m_merge, &SidebarRow::clicked, this,
            [this] { m_model.destination = Destination(Destination::Place::Merge); });
    m_watches.keep([this] { showFiles(); }, m_model.files);
    m_watches.keep([this] { markCurrent(); }, m_model.files, m_model.destination);
}

void SidebarView::showFiles()
{
    const QList<OpenFilePtr> files = m_model.files.value();
    m_files.removeIf([&files](FileRow* row) {
        if (files.contains(row->file()))
            return false;
        row->hide();
        row->deleteLater(); // it may be what asked for the closing
        return true;
    });
    for (const OpenFilePtr& file : files) {
        if (std::ranges::any_of(m_files, [&file](FileRow* row) { return row->file() == file; }))
            continue;
        m_files.append(new FileRow(m_model, file));
        m_rows->addWidget(m_files.last());
    }
    setTabOrder(m_home, m_files.isEmpty() ? m_open : m_files.first());
    for (qsizetype i = 0; i < m_files.size(); ++i) {
        setTabOrder(m_files[i], m_files[i]->lastInTabOrder());
        setTabOrder(m_files[i]->lastInTabOrder(), i + 1 < m_files.size() ? m_files[i + 1] : m_open);
    }
    setTabOrder(m_open, m_merge);
}

void SidebarView::markCurrent()
{
    const OpenFilePtr shown = currentFile(m_model);
    const bool merges = m_model.destination.value() == Destination(Destination::Place::Merge);
    m_home->setCurrent(!shown && !merges);
    m_merge->setCurrent(merges);
    for (FileRow* row : m_files)
        row->setCurrent(row->file() == shown);
}

} // namespace folvane
