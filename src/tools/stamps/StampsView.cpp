#include "tools/stamps/StampsView.h"

#include "controls/TextLabel.h"
#include "controls/appearance.h"
#include "controls/containers/Panel.h"
#include "controls/containers/PlainScrollArea.h"
#include "controls/dragging/dropSign.h"
#include "controls/layouts.h"
#include "controls/sheets/Alert.h"
#include "controls/style/Theme.h"
#include "controls/style/icons.h"
#include "controls/style/visualMargin.h"
#include "controls/texts/NoteLabel.h"
#include "tools/stamps/NewStampMenu.h"
#include "tools/stamps/RenameSheet.h"
#include "tools/stamps/StampCard.h"
#include "tools/stamps/StampDrops.h"
#include "tools/stamps/StampGrid.h"
#include "tools/stamps/openNewStampSheet.h"

#include <QPainter>

namespace folvane {

namespace {

constexpr int padding = 20;
constexpr int emptyIconSide = 20;
constexpr int widestAskedName = 800; // about two lines of a title
constexpr AdaptiveColumns columns{200, 16};

} // namespace

StampsView::StampsView(AppModel& model, QWidget* parent)
    : QWidget(parent), m_model(model), m_drops(new StampDrops(*this)), m_scroll(new PlainScrollArea(this))
{
    m_scroll->setPage(makePage());
    makeColumn(this, {}, 0)->addWidget(m_scroll);
    connect(m_new, &NewStampMenu::chosen, this, &StampsView::make);
    connect(m_drops, &StampDrops::dropped, this, &StampsView::make);
    connect(m_drops, &StampDrops::underDragChanged, this, qOverload<>(&QWidget::update));
    connect(m_grid, &StampGrid::left, this, &StampsView::takeFocus);
    connect(m_grid, &StampGrid::reached, this,
            [this](QWidget* card) { m_scroll->ensureWidgetVisible(card); });
}

QWidget* StampsView::makePage()
{
    auto* page = new QWidget(m_scroll);
    QWidget* empty = makeEmptyState(page);
    m_grid = new StampGrid(m_model, columns, [this](const QUuid& stamp) { return makeCard(stamp); }, page);
    m_grid->setEmptyState(empty);
    setVisualMargin(*m_grid, Panel::margin());
    m_grid->layout()->setContentsMargins(Panel::margin());
    auto* column = makeColumn(page, QMargins() + padding, padding);
    column->addLayout(makeHeader(page));
    column->addWidget(empty);
    column->addWidget(m_grid);
    column->addStretch();
    return page;
}

QLayout* StampsView::makeHeader(QWidget* page)
{
    m_new = new NewStampMenu(m_model, page);
    auto* row = makeRow(nullptr, {}, 24);
    row->addWidget(
        new TextLabel(tr("Signatures & Stamps"), interfaceFont(24, Weight::Bold), theme::text, page));
    row->addWidget(m_new);
    auto* header = makeColumn(nullptr, {}, 8);
    header->addLayout(row);
    header->addWidget(new NoteLabel(
        tr("Your signature, initials or a company seal, with the paper removed automatically. They stay only "
           "on this Mac. Folvane puts your own images on documents; it doesn't make a signature legally "
           "binding by itself."),
        13, page));
    return header;
}

QWidget* StampsView::makeEmptyState(QWidget* page) const
{
    auto* panel = new Panel(padding, page);
    auto* icon = new QLabel(panel);
    icon->setPixmap(themedIcon(Icon::Gesture, theme::accent)
                        .pixmap(QSize(emptyIconSide, emptyIconSide), devicePixelRatioF()));
    auto* title = makeRow(nullptr, {}, 8);
    title->addWidget(icon);
    title->addWidget(new TextLabel(tr("No signatures or stamps yet"), interfaceFont(15, Weight::SemiBold),
                                   theme::text, panel),
                     1);
    panel->content().addLayout(title);
    panel->content().addWidget(new NoteLabel(
        tr("Sign a white sheet of paper or stamp it, then take a photo with your iPhone (File › Import from "
           "iPhone or iPad) or choose a scan. You can also draw with the trackpad or pick a ready stamp like "
           "PAID or APPROVED."),
        13, panel));
    return panel;
}

QWidget* StampsView::makeCard(const QUuid& stamp)
{
    auto* card = new StampCard(m_model, stamp);
    connect(card, &StampCard::renameRequested, this, &StampsView::askForName);
    connect(card, &StampCard::deleteRequested, this, &StampsView::askToDelete);
    return card;
}

void StampsView::make(const StampSource& source)
{
    openNewStampSheet(m_model, source, *this);
}

void StampsView::askForName(const StampRecord& record)
{
    auto* sheet = new RenameSheet(record.name, window());
    sheet->setAttribute(Qt::WA_DeleteOnClose);
    connect(sheet, &RenameSheet::renamed, this,
            [this, id = record.id](const QString& name) { m_model.stamps.rename(id, name); });
    sheet->open();
}

void StampsView::askToDelete(const StampRecord& record)
{
    const QFontMetrics title(interfaceFont(17, Weight::Bold));
    const QString name = title.elidedText(record.name, Qt::ElideRight, widestAskedName);
    auto* alert =
        new Alert(tr("Delete “%1”?").arg(name),
                  tr("It also leaves pages open in Folvane. Files you already saved keep it."), window());
    alert->setAttribute(Qt::WA_DeleteOnClose);
    alert->addButton(tr("Delete"), Alert::Role::Destructive,
                     [this, id = record.id] { m_model.deleteStamp(id); });
    alert->addButton(tr("Cancel"), Alert::Role::Cancel);
    alert->open();
}

void StampsView::takeFocus()
{
    if (!m_grid->takeFocus())
        m_new->setFocus();
}

void StampsView::paintEvent(QPaintEvent*)
{
    if (!m_drops->isUnderDrag())
        return;
    QPainter painter(this);
    drawDropSign(painter, rect());
}

} // namespace folvane
