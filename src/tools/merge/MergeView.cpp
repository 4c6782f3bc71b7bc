#include "tools/merge/MergeView.h"

#include "controls/Button.h"
#include "controls/TextLabel.h"
#include "controls/appearance.h"
#include "controls/dragging/FileDrops.h"
#include "controls/dragging/dropSign.h"
#include "controls/layouts.h"
#include "controls/paletteColors.h"
#include "controls/popUpBelow.h"
#include "controls/style/Theme.h"
#include "controls/style/mnemonics.h"
#include "controls/texts/NoteLabel.h"
#include "platform/tasks/spawn.h"
#include "tools/merge/MergeList.h"
#include "viewParts/choosingFiles.h"

#include <QMenu>
#include <QPainter>
#include <QStackedWidget>

namespace folvane {

namespace {

constexpr int padding = 28;
constexpr int emptyIconSide = 48;
constexpr int widestMenuName = 320;

QString menuName(const QMenu& menu, const QString& name)
{
    return literal(QFontMetrics(menu.font()).elidedText(name, Qt::ElideMiddle, widestMenuName));
}

} // namespace

MergeView::MergeView(AppModel& model, QWidget* parent)
    : QWidget(parent), m_model(model), m_drops(new FileDrops(*this)), m_states(new QStackedWidget(this))
{
    auto* column = makeColumn(this, {0, padding, 0, 0}, 18);
    column->addLayout(makeHeader());
    column->addWidget(m_states, 1);
    m_states->addWidget(makeEmptyState());
    m_states->addWidget(makeFilledState());
    connect(m_drops, &FileDrops::underDragChanged, this, qOverload<>(&QWidget::update));
    connect(m_drops, &FileDrops::dropped, this,
            [this](const QList<QUrl>& files) { spawn(m_model.addToMerge(files)); });
    m_watches.keep([this] { refresh(); }, m_model.merge.items, m_model.busy);
}

QLayout* MergeView::makeHeader()
{
    auto* words = makeColumn(nullptr, {}, 4);
    words->addWidget(new TextLabel(tr("Merge PDFs"), interfaceFont(24, Weight::Bold), theme::text, this));
    words->addWidget(new NoteLabel(
        tr("Drop PDFs and images here, drag them into order, then Merge. Open files join as they are now, "
           "with their turns, removed pages and stamps."),
        13, this));
    auto* row = makeRow(nullptr, {padding, 0, padding, 0}, 24);
    row->addLayout(words, 1);
    row->addWidget(makeAddButton(), 0, Qt::AlignTop);
    return row;
}

QWidget* MergeView::makeAddButton()
{
    m_add = new Button(Button::Kind::Secondary, tr("Add"), this);
    m_add->setSymbol(Icon::Add);
    m_addMenu = new QMenu(tr("Add"), this);
    connect(m_add, &Button::clicked, this, [this] {
        fillAddMenu();
        popUpBelow(*m_addMenu, *m_add);
    });
    return m_add;
}

void MergeView::fillAddMenu()
{
    m_addMenu->clear();
    m_addMenu->addAction(tr("Add Files…"), this,
                         [this] { spawn(chooseFilesAnd(m_model, &AppModel::addToMerge)); });
    const QList<OpenFilePtr> files = m_model.files.value();
    if (!files.isEmpty())
        m_addMenu->addSeparator();
    for (const OpenFilePtr& file : files)
        m_addMenu->addAction(menuName(*m_addMenu, file->name), this,
                             [this, file] { m_model.merge.add(*file); });
}

QWidget* MergeView::makeEmptyState()
{
    auto* page = new QWidget(m_states);
    auto* icon = new QLabel(page);
    icon->setPixmap(themedIcon(Icon::Layers, theme::accent)
                        .pixmap(QSize(emptyIconSide, emptyIconSide), devicePixelRatioF()));
    auto* title =
        new TextLabel(tr("Drop files to merge"), interfaceFont(16, Weight::SemiBold), theme::text, page);
    auto* detail =
        new TextLabel(tr("Two or more PDFs or images"), interfaceFont(12.5), theme::secondaryText, page);
    auto* column = makeColumn(page, {padding, 0, padding, 3 * padding}, 8);
    column->addStretch();
    for (QWidget* part :
         {static_cast<QWidget*>(icon), static_cast<QWidget*>(title), static_cast<QWidget*>(detail)})
        column->addWidget(part, 0, Qt::AlignHCenter);
    column->addStretch();
    return page;
}

QWidget* MergeView::makeFilledState()
{
    auto* page = new QWidget(m_states);
    m_list = new MergeList(m_model, page);
    auto* column = makeColumn(page, {}, 0);
    column->addWidget(m_list, 1);
    m_footer = makeFooter(page);
    column->addWidget(m_footer);
    return page;
}

QWidget* MergeView::makeFooter(QWidget* parent)
{
    auto* footer = new QWidget(parent);
    setGround(*footer, theme::surface);
    m_count = new TextLabel(QString(), interfaceFont(13), theme::secondaryText, footer);
    auto* clear = new Button(Button::Kind::Secondary, tr("Clear"), footer);
    m_merge = new Button(Button::Kind::Primary, tr("Merge…"), footer);
    auto* row = makeRow(footer, {padding, 16, padding, 16}, 10);
    row->addWidget(m_count, 1);
    row->addWidget(clear);
    row->addWidget(m_merge);
    connect(clear, &Button::clicked, this, [this] {
        m_model.merge.clear();
        takeFocus();
    });
    connect(m_merge, &Button::clicked, this, [this] { spawn(m_model.mergeFiles()); });
    return footer;
}

void MergeView::refresh()
{
    const std::vector<MergeItem>& items = m_model.merge.items.value();
    m_states->setCurrentIndex(items.empty() ? 0 : 1);
    m_count->setText(tr("%1 files · %2 pages").arg(items.size()).arg(m_model.merge.pageCount()));
    m_merge->setEnabled(items.size() >= 2 && !m_model.busy.value());
}

void MergeView::takeFocus()
{
    if (m_model.merge.items.value().empty())
        m_add->setFocus();
    else
        m_list->setFocus();
}

void MergeView::paintEvent(QPaintEvent*)
{
    if (!m_drops->isUnderDrag())
        return;
    QPainter painter(this);
    drawDropSign(painter, rect().adjusted(0, 0, 0, m_footer->isVisible() ? -m_footer->height() : 0));
}

} // namespace folvane
