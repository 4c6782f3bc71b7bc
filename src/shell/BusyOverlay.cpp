#include "shell/BusyOverlay.h"

#include "controls/Button.h"
#include "controls/Spinner.h"
#include "controls/Theme.h"
#include "controls/appearance.h"

#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

namespace folvane {

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
    auto* column = new QVBoxLayout(m_panel);
    column->setContentsMargins(28, 28, 28, 28);
    column->setSpacing(14);
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
        hide();
        if (m_focusBefore)
            m_focusBefore->setFocus();
        m_focusBefore = nullptr;
        return;
    }
    if (!isVisible())
        m_focusBefore = parentWidget()->focusWidget();
    show();
    m_title->setText(state->title);
    setAccessibleName(state->title);
    setGeometry(parentWidget()->rect());
    raise();
    m_cancel->setFocus();
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
    painter.fillRect(rect(), QColor(0, 0, 0, 31)); // 0.12
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const QRectF panel = m_panel->geometry();
    for (int spread = 12; spread >= 1; --spread) {
        painter.setBrush(QColor(0, 0, 0, 4));
        painter.drawRoundedRect(panel.adjusted(-spread, -spread, spread, spread).translated(0, 6),
                                18 + spread, 18 + spread);
    }
    painter.setBrush(theme::surface);
    painter.drawRoundedRect(panel, 18, 18);
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
