#include "shell/ToastView.h"

#include "controls/LinkButton.h"
#include "controls/accessibility.h"
#include "controls/appearance.h"
#include "controls/style/Shadow.h"
#include "controls/style/Theme.h"
#include "controls/style/icons.h"
#include "controls/texts/ElidedLabel.h"

#include <QEvent>
#include <QGraphicsOpacityEffect>
#include <QHBoxLayout>
#include <QPainter>

#include <algorithm>

namespace folvane {

namespace {

const Shadow shadow{theme::faded(theme::black, 0.12), 12, 4};
constexpr int shadowRoom = 18;
constexpr int overEdge = 28;
constexpr int overFooter = 12;
constexpr int widestText = 460;
constexpr int motionTime = 200; // milliseconds

} // namespace

ToastView::ToastView(QWidget* area)
    : QWidget(area),
      m_text(new ElidedLabel(this)),
      m_reveal(new LinkButton(tr("Show in Finder"), this)),
      m_fading(new QGraphicsOpacityEffect(this))
{
    auto* icon = new QLabel(this);
    icon->setPixmap(themedIcon(Icon::CheckCircle, theme::success).pixmap(QSize(18, 18), devicePixelRatioF()));
    m_text->setFont(interfaceFont(13, Weight::Medium));
    setGraphicsEffect(m_fading);

    auto* row = new QHBoxLayout(this);
    row->setSpacing(8);
    row->addWidget(icon);
    row->addWidget(m_text);
    row->addWidget(m_reveal); // with the room of its ring 12 from the text
    connect(m_reveal, &QAbstractButton::clicked, this, [this] {
        if (m_toast && m_toast->reveal)
            emit revealRequested(*m_toast->reveal);
    });
    m_motion.setDuration(motionTime);
    m_motion.setEasingCurve(QEasingCurve::OutQuad);
    connect(&m_motion, &QVariantAnimation::valueChanged, this,
            [this](const QVariant& shown) { moveTo(shown.toDouble()); });
    connect(&m_motion, &QVariantAnimation::finished, this, &ToastView::settle);
    area->installEventFilter(this);
    hide();
}

void ToastView::setToast(const std::optional<Toast>& toast)
{
    m_toast = toast;
    if (toast)
        showText(*toast);
    else if (!isVisible())
        return;
    m_motion.stop();
    m_motion.setStartValue(m_shown);
    m_motion.setEndValue(toast ? 1.0 : 0.0);
    m_motion.start();
}

void ToastView::standOn(QWidget* footer)
{
    if (footer == m_footer)
        return;
    if (m_footer)
        m_footer->removeEventFilter(this);
    if (footer)
        footer->installEventFilter(this);
    m_footer = footer;
    place();
}

void ToastView::showText(const Toast& toast)
{
    m_text->setText(toast.text);
    m_text->setFixedWidth(std::min(widestText, m_text->fontMetrics().horizontalAdvance(toast.text) + 2));
    m_reveal->setVisible(toast.reveal.has_value());
    const int ring = toast.reveal ? LinkButton::ringRoom : 0; // lies over the padding
    layout()->setContentsMargins(QMargins(16, 10, 16 - ring, 10) + shadowRoom);
    setAccessibleName(toast.text);
    layout()->activate();
    moveTo(m_shown);
    show();
    raise();
    announce(*this);
}

void ToastView::moveTo(double shown)
{
    m_shown = shown;
    m_fading->setEnabled(shown < 1); // drawing through it costs sharpness
    m_fading->setOpacity(shown);
    place();
}

void ToastView::settle()
{
    setVisible(m_toast.has_value());
}

int ToastView::aboveBottom() const
{
    const bool onFooter = m_footer && m_footer->isVisible();
    return onFooter ? std::max(overEdge, m_footer->height() + overFooter) : overEdge;
}

void ToastView::place()
{
    adjustSize();
    const QWidget* area = parentWidget();
    const int inPlace = area->height() - height() - aboveBottom() + shadowRoom;
    move((area->width() - width()) / 2, qRound(area->height() + m_shown * (inPlace - area->height())));
}

bool ToastView::eventFilter(QObject* watched, QEvent* event)
{
    const auto type = event->type();
    if (isVisible() && (type == QEvent::Resize || type == QEvent::Show || type == QEvent::Hide))
        place();
    return QWidget::eventFilter(watched, event);
}

void ToastView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF capsule = QRectF(rect()).adjusted(shadowRoom, shadowRoom, -shadowRoom, -shadowRoom);
    drawCard(painter, capsule, capsule.height() / 2, shadow);
    const QRectF line = capsule.adjusted(0.5, 0.5, -0.5, -0.5);
    painter.setPen(QPen(theme::hairline, 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(line, line.height() / 2, line.height() / 2);
}

} // namespace folvane
