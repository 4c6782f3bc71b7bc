#include "shell/ToastView.h"

#include "controls/ElidedLabel.h"
#include "controls/Theme.h"
#include "controls/appearance.h"
#include "controls/icons.h"

#include <QAccessible>
#include <QEvent>
#include <QHBoxLayout>
#include <QPainter>
#include <QToolButton>

namespace folvane {

namespace {

constexpr int shadowRoom = 14;
constexpr int aboveBottom = 28;
constexpr int widestText = 460;

} // namespace

ToastView::ToastView(QWidget* area)
    : QWidget(area), m_text(new ElidedLabel(this)), m_reveal(new QToolButton(this))
{
    auto* icon = new QLabel(this);
    icon->setPixmap(themedIcon(Icon::CheckCircle, theme::success).pixmap(QSize(18, 18), devicePixelRatioF()));
    m_text->setFont(interfaceFont(13, Weight::Medium));
    m_reveal->setText(tr("Show in Finder"));
    m_reveal->setFont(interfaceFont(13, Weight::SemiBold));
    m_reveal->setAutoRaise(true);
    m_reveal->setCursor(Qt::PointingHandCursor);
    m_reveal->setFocusPolicy(Qt::StrongFocus);
    QPalette palette = m_reveal->palette();
    palette.setColor(QPalette::ButtonText, theme::accentDeep);
    m_reveal->setPalette(palette);

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(16 + shadowRoom, 10 + shadowRoom, 16 + shadowRoom, 10 + shadowRoom);
    row->setSpacing(8);
    row->addWidget(icon);
    row->addWidget(m_text);
    row->addSpacing(4);
    row->addWidget(m_reveal);
    connect(m_reveal, &QToolButton::clicked, this, [this] {
        if (m_toast && m_toast->reveal)
            emit revealRequested(*m_toast->reveal);
    });
    area->installEventFilter(this);
    hide();
}

void ToastView::setToast(const std::optional<Toast>& toast)
{
    m_toast = toast;
    if (!toast) {
        hide();
        return;
    }
    m_text->setText(toast->text);
    m_text->setFixedWidth(std::min(widestText, m_text->fontMetrics().horizontalAdvance(toast->text) + 2));
    m_reveal->setVisible(toast->reveal.has_value());
    setAccessibleName(toast->text);
    layout()->activate();
    place();
    show();
    raise();
    QAccessibleEvent announced(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&announced);
}

void ToastView::place()
{
    adjustSize();
    const QWidget* area = parentWidget();
    move((area->width() - width()) / 2, area->height() - height() - aboveBottom + shadowRoom);
}

bool ToastView::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize && isVisible())
        place();
    return QWidget::eventFilter(watched, event);
}

void ToastView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF capsule = QRectF(rect()).adjusted(shadowRoom, shadowRoom, -shadowRoom, -shadowRoom);
    painter.setPen(Qt::NoPen);
    for (int spread = 10; spread >= 1; --spread) {
        painter.setBrush(QColor(0, 0, 0, 4));
        const QRectF edge = capsule.adjusted(-spread, -spread, spread, spread).translated(0, 4);
        painter.drawRoundedRect(edge, edge.height() / 2, edge.height() / 2);
    }
    painter.setBrush(theme::surface);
    painter.setPen(QPen(theme::hairline, 1));
    painter.drawRoundedRect(capsule, capsule.height() / 2, capsule.height() / 2);
}

} // namespace folvane
