#include "shell/BusyOverlay.h"

#include "controls/Button.h"
#include "controls/Spinner.h"
#include "controls/appearance.h"
#include "controls/layouts.h"
#include "controls/style/Shadow.h"
#include "controls/style/Theme.h"

#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

#include <utility>

namespace folvane {

namespace {

const Shadow shadow{theme::faded(theme::black, 0.15), 20, 6};

} // namespace

BusyOverlay::BusyOverlay(QWidget* window)
    : QWidget(window),
      m_panel(new QWidget(this)),
      m_title(new QLabel(m_panel)),
      m_cancel(new Button(Button::Kind::Secondary, tr("Cancel"), m_panel))
{
    setFocusPolicy(Qt::StrongFocus);
    m_title->setFont(interfaceFont(14, Weight::SemiBold));
    m_title->setAlignment(Qt::AlignCenter);
    m_title->setMinimumWidth(160);
    auto* column = makeColumn(m_panel, {28, 28, 28, 28}, 14);
    column->addWidget(new Spinner(32, m_panel), 0, Qt::AlignHCenter);
    column->addWidget(m_title);
    column->addWidget(m_cancel, 0, Qt::AlignHCenter);
    auto* outer = new QVBoxLayout(this);
    outer->addWidget(m_panel, 0, Qt::AlignCenter);
    connect(m_cancel, &Button::clicked, this, &BusyOverlay::cancelled);
    window->installEventFilter(this);
    hide();
}

void BusyOverlay::setState(const std::optional<BusyState>& state)
{
    if (!state) {
        giveKeyboardBack();
        hide();
        return;
    }
    if (!isVisible())
        m_focusBefore = parentWidget()->focusWidget();
    show();
    m_title->setText(state->title);
    setAccessibleName(state->title);
    setGeometry(parentWidget()->rect());
    raise();
    setFocus();
}

// Before the overlay goes: what is hidden with the keyboard passes it on as the Tab key would.
void BusyOverlay::giveKeyboardBack()
{
    QWidget* before = std::exchange(m_focusBefore, nullptr);
    if (!isVisible())
        return;
    if (before && before->isVisible() && before->isEnabled())
        before->setFocus();
    else
        emit keyboardFreed();
}

bool BusyOverlay::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize)
        setGeometry(parentWidget()->rect());
    return QWidget::eventFilter(watched, event);
}

void BusyOverlay::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), theme::faded(theme::black, 0.12));
    drawCard(painter, m_panel->geometry(), 18, shadow);
}

void BusyOverlay::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        emit cancelled();
    event->accept(); // nothing below it hears the keyboard
}

void BusyOverlay::mousePressEvent(QMouseEvent* event)
{
    event->accept();
}

bool BusyOverlay::focusNextPrevChild(bool)
{
    m_cancel->setFocus();
    return true; // Tab does not lead below the overlay
}

} // namespace folvane
