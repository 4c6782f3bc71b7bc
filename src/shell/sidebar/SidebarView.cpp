#include "shell/sidebar/SidebarView.h"

#include "controls/BrandMark.h"
#include "controls/SectionHeader.h"
#include "controls/TextLabel.h"
#include "controls/appearance.h"
#include "controls/layouts.h"
#include "controls/paletteColors.h"
#include "controls/style/Theme.h"
#include "documents/currentFile.h"
#include "platform/tasks/spawn.h"
#include "shell/sidebar/BarIcon.h"
#include "shell/sidebar/FileList.h"
#include "shell/sidebar/SidebarRow.h"

namespace folvane {

namespace {

QWidget* makeHeader(const QString& text, QWidget* parent)
{
    auto* header = new SectionHeader(text, parent);
    header->setContentsMargins(10, 14, 0, 4);
    return header;
}

QLayout* makeBrand(QWidget* parent, const QList<QWidget*>& buttons)
{
    auto* words = makeColumn(nullptr, {}, 0);
    words->addWidget(
        new TextLabel(SidebarView::tr("Folvane"), interfaceFont(12, Weight::SemiBold), theme::text, parent));
    words->addWidget(new TextLabel(SidebarView::tr("by Merrowlight Apps"), interfaceFont(10),
                                   theme::secondaryText, parent));
    auto* row = makeRow(nullptr, {12, 12, 12, 12}, 8);
    row->addWidget(new BrandMark(28, parent), 0, Qt::AlignVCenter);
    row->addLayout(words, 1);
    for (QWidget* button : buttons)
        row->addWidget(button, 0, Qt::AlignVCenter);
    return row;
}

} // namespace

SidebarView::SidebarView(AppModel& model, QWidget* parent) : QWidget(parent), m_model(model)
{
    setGround(*this, theme::chrome);
    auto* column = makeColumn(this, {}, 0);
    column->addWidget(makeList(), 1);
    m_support = new BarIcon(Icon::Heart, tr("Support Folvane"), tr("Support the developer"), this);
    m_about = new BarIcon(Icon::Info, tr("About Folvane"), tr("About, updates, privacy and support"), this);
    column->addLayout(makeBrand(this, {m_support, m_about}));

    connect(m_home, &SidebarRow::clicked, this, [this] { go(Destination()); });
    connect(m_open, &SidebarRow::clicked, this, [this] { spawn(m_model.chooseAndOpen()); });
    connect(m_merge, &SidebarRow::clicked, this, [this] { go(Destination(Destination::Place::Merge)); });
    connect(m_stamps, &SidebarRow::clicked, this, [this] { go(Destination(Destination::Place::Stamps)); });
    connect(m_codes, &SidebarRow::clicked, this, [this] { go(Destination(Destination::Place::Codes)); });
    connect(m_support, &BarIcon::clicked, this, [this] { m_model.support = SupportPrompt::Manual; });
    connect(m_about, &BarIcon::clicked, this, [this] { go(Destination(Destination::Place::About)); });
    connect(m_files, &FileList::chosen, this, &SidebarView::chosen);
    m_watches.keep([this] { markCurrent(); }, m_model.files, m_model.destination);
}

QWidget* SidebarView::makeList()
{
    auto* list = new QWidget(this);
    m_home = new SidebarRow(Icon::Home, tr("Home"), list);
    m_files = new FileList(m_model, list);
    m_files->setTabPredecessor(m_home);
    m_open = new SidebarRow(Icon::Add, tr("Open…"), list);
    m_open->setColor(theme::accentDeep);
    m_merge = new SidebarRow(Icon::Layers, tr("Merge PDFs"), list);
    m_stamps = new SidebarRow(Icon::Gesture, tr("Signatures & Stamps"), list);
    m_codes = new SidebarRow(Icon::ScanCode, tr("QR Codes"), list);
    auto* column = makeColumn(list, {10, 12, 10, 12}, 2);
    column->addWidget(m_home);
    column->addWidget(makeHeader(tr("Files"), list));
    column->addWidget(m_files);
    column->addWidget(m_open);
    column->addWidget(makeHeader(tr("Tools"), list));
    column->addWidget(m_merge);
    column->addWidget(m_stamps);
    column->addWidget(m_codes);
    column->addStretch();
    return list;
}

void SidebarView::go(const Destination& destination)
{
    m_model.destination = destination;
    emit chosen();
}

void SidebarView::markCurrent()
{
    const std::optional<Destination> destination = m_model.destination.value();
    const bool merges = destination == Destination(Destination::Place::Merge);
    const bool stamps = destination == Destination(Destination::Place::Stamps);
    const bool codes = destination == Destination(Destination::Place::Codes);
    const bool about = destination == Destination(Destination::Place::About);
    m_home->setCurrent(!currentFile(m_model) && !merges && !stamps && !codes && !about);
    m_merge->setCurrent(merges);
    m_stamps->setCurrent(stamps);
    m_codes->setCurrent(codes);
}

} // namespace folvane
