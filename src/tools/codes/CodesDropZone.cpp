#include "tools/codes/CodesDropZone.h"

#include "controls/Button.h"
#include "controls/TextLabel.h"
#include "controls/appearance.h"
#include "controls/dragging/dropZoneLook.h"
#include "controls/layouts.h"
#include "controls/style/Theme.h"
#include "controls/style/icons.h"
#include "controls/texts/NoteLabel.h"
#include "platform/tasks/spawn.h"
#include "viewParts/choosingFiles.h"

#include <QPainter>

namespace folvane {

namespace {

constexpr int padding = 24;
constexpr int iconSide = 34;

} // namespace

CodesDropZone::CodesDropZone(AppModel& model, QWidget* parent) : QFrame(parent)
{
    auto* icon = new QLabel(this);
    icon->setPixmap(
        themedIcon(Icon::ScanCode, theme::accent).pixmap(QSize(iconSide, iconSide), devicePixelRatioF()));
    auto* how = new NoteLabel(tr("Or copy a screenshot (⌘⌃⇧4) and paste it with ⌘V."), 13, this);
    how->setAlignment(Qt::AlignCenter);
    auto* column = makeColumn(this, QMargins() + padding, 8);
    column->addWidget(icon, 0, Qt::AlignHCenter);
    column->addWidget(new TextLabel(tr("Drop a picture or PDF here"), interfaceFont(16, Weight::SemiBold),
                                    theme::text, this),
                      0, Qt::AlignHCenter);
    column->addWidget(how);
    column->addSpacing(4);
    column->addLayout(makeButtons(model));
}

QLayout* CodesDropZone::makeButtons(AppModel& model)
{
    m_open = new Button(Button::Kind::Secondary, tr("Open…"), this);
    m_open->setSymbol(Icon::Add);
    auto* paste = new Button(Button::Kind::Secondary, tr("Paste"), this);
    paste->setSymbol(Icon::Paste);
    connect(m_open, &Button::clicked, this, [&model] { spawn(chooseFilesAnd(model, &AppModel::readCodes)); });
    connect(paste, &Button::clicked, this, [&model] { spawn(model.readCodesFromClipboard()); });
    auto* row = makeRow(nullptr, {}, 10);
    row->addStretch();
    row->addWidget(m_open);
    row->addWidget(paste);
    row->addStretch();
    return row;
}

void CodesDropZone::setTargeted(bool targeted)
{
    m_isTargeted = targeted;
    update();
}

void CodesDropZone::takeFocus()
{
    m_open->setFocus();
}

void CodesDropZone::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPainterPath shape = dropZoneShape(rect());
    fillDropZone(painter, shape, m_isTargeted);
    outlineDropZone(painter, shape, m_isTargeted ? theme::accent : theme::hairline);
}

} // namespace folvane
