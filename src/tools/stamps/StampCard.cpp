#include "tools/stamps/StampCard.h"

#include "controls/accessibility.h"
#include "controls/appearance.h"
#include "controls/layouts.h"
#include "controls/popUpBelow.h"
#include "controls/smallButton.h"
#include "controls/texts/ElidedLabel.h"
#include "tools/stamps/StampTile.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QToolButton>

namespace folvane {

namespace {

constexpr int padding = 12;
constexpr int tileHeight = 110;
constexpr int moreSide = 26;
constexpr int moreIcon = 18;

} // namespace

StampCard::StampCard(AppModel& model, const QUuid& stamp, QWidget* parent)
    : Panel(padding, parent),
      m_record{.id = stamp, .name = {}},
      m_model(model),
      m_name(new ElidedLabel(this)),
      m_more(makeSmallButton(Icon::More, moreSide, moreIcon, this))
{
    setFocusPolicy(Qt::StrongFocus);
    setSpokenRole(*this, QAccessible::ListItem);
    content().addWidget(new StampTile(model, stamp, tileHeight, this));
    content().addLayout(makeFoot());
    connect(m_more, &QToolButton::clicked, this, &StampCard::popUp);
    m_watches.keep([this] { refresh(); }, model.stamps.stamps);
}

QLayout* StampCard::makeFoot()
{
    m_name->setFont(interfaceFont(13, Weight::Medium));
    m_more->setToolTip(tr("Rename or delete"));
    auto* foot = makeRow(nullptr, {2, 0, 0, 0}, 4);
    foot->addWidget(m_name, 1);
    foot->addWidget(m_more);
    return foot;
}

void StampCard::refresh()
{
    const std::optional<StampRecord> now = m_model.stamps.record(m_record.id);
    if (!now || now == m_record)
        return;
    m_record = *now;
    m_name->setText(m_record.name);
    setAccessibleName(m_record.name);
    m_more->setAccessibleName(tr("Rename or delete “%1”").arg(m_record.name));
}

QMenu* StampCard::makeMenu()
{
    auto* menu = new QMenu(m_record.name, this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(tr("Rename…"), this, [this] { emit renameRequested(m_record); })->setShortcut(Qt::Key_F2);
    menu->addAction(tr("Delete…"), this, [this] { emit deleteRequested(m_record); })
        ->setShortcut(Qt::Key_Delete);
    for (QAction* action : menu->actions())
        action->setShortcutContext(Qt::WidgetShortcut); // the card listens for the keys
    return menu;
}

void StampCard::popUp()
{
    popUpBelow(*makeMenu(), *m_more);
}

void StampCard::contextMenuEvent(QContextMenuEvent* event)
{
    if (event->reason() == QContextMenuEvent::Keyboard)
        popUp();
    else
        makeMenu()->popup(event->globalPos());
}

void StampCard::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_F2: emit renameRequested(m_record); break;
    case Qt::Key_Delete: emit deleteRequested(m_record); break;
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter: popUp(); break;
    default: Panel::keyPressEvent(event);
    }
}

} // namespace folvane
