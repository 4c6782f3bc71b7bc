#include "tools/sign/SignBar.h"

#include "controls/Button.h"
#include "controls/ControlGroup.h"
#include "controls/layouts.h"
#include "controls/paletteColors.h"
#include "controls/style/Theme.h"
#include "viewParts/BarTitle.h"

#include <QShortcut>

namespace folvane {

namespace {

QString withKey(const QString& text, const QKeySequence& key)
{
    return QStringLiteral("%1 (%2)").arg(text, key.toString(QKeySequence::NativeText));
}

} // namespace

SignBar::SignBar(QWidget* parent) : QWidget(parent), m_title(new BarTitle(this))
{
    m_title->setTitle(tr("Sign & Stamp"));
    setGround(*this, theme::surface);
    auto* back = new Button(Button::Kind::Tool, tr("Pages"), this);
    back->setSymbol(Icon::ChevronLeft);
    back->setToolTip(tr("Back to all pages"));
    auto* done = new Button(Button::Kind::Secondary, tr("Done"), this);
    auto* save = new Button(Button::Kind::Primary, tr("Save As…"), this);
    save->setToolTip(withKey(save->text(), QKeySequence(Qt::CTRL | Qt::Key_S))); // bound in the File menu
    auto* row = makeRow(this, {20, 12, 20, 12}, 12);
    row->addWidget(back);
    row->addWidget(m_title, 1);
    row->addWidget(makeStepButtons());
    row->addWidget(done);
    row->addWidget(save);
    connect(back, &Button::clicked, this, &SignBar::leaveRequested);
    connect(done, &Button::clicked, this, &SignBar::leaveRequested);
    connect(save, &Button::clicked, this, &SignBar::saveRequested);
}

QWidget* SignBar::makeStepButtons()
{
    auto* group = new ControlGroup(this);
    m_previous = addStep(*group, Icon::ExpandLess, tr("Previous Page"), Qt::CTRL | Qt::Key_Up, -1);
    m_next = addStep(*group, Icon::ExpandMore, tr("Next Page"), Qt::CTRL | Qt::Key_Down, 1);
    return group;
}

// A shortcut of the button itself would press it for a tenth of a second before anything happens.
QAbstractButton* SignBar::addStep(ControlGroup& group, Icon icon, const QString& name,
                                  const QKeySequence& key, int pages)
{
    QAbstractButton* button = group.addButton(icon, name, withKey(name, key));
    connect(button, &QAbstractButton::clicked, this, [this, pages] { emit stepRequested(pages); });
    connect(new QShortcut(key, this), &QShortcut::activated, this, [this, button, pages] {
        if (button->isEnabled())
            emit stepRequested(pages);
    });
    return button;
}

void SignBar::setPlace(int index, int count)
{
    m_title->setDetail(tr("Page %1 of %2").arg(index + 1).arg(count));
    enable(m_previous, index > 0);
    enable(m_next, index < count - 1);
}

void SignBar::enable(QAbstractButton* button, bool enabled)
{
    if (!enabled && button->hasFocus())
        emit keyboardFreed(); // before Qt passes the keyboard on to the next button
    button->setEnabled(enabled);
}

} // namespace folvane
