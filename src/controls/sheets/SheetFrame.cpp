#include "controls/sheets/SheetFrame.h"

#include "controls/appearance.h"
#include "controls/layouts.h"
#include "controls/style/Shadow.h"
#include "controls/style/blending.h"
#include "controls/texts/breakableText.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QVBoxLayout>
#include <QWindow>

#include <algorithm>

namespace folvane {

namespace {

constexpr double cornerRadius = 18;
constexpr int padding = 24;
constexpr int iconSide = 24;
constexpr int iconGap = 10;

} // namespace

SheetFrame::SheetFrame(const QString& title, QWidget* parent, int width)
    : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint),
      m_width(width),
      m_floats(screenBlendsWindows()),
      m_icon(new QLabel(this)),
      m_title(new QLabel(this)),
      m_content(new QVBoxLayout),
      m_buttons(new QHBoxLayout)
{
    setAttribute(Qt::WA_TranslucentBackground, m_floats);
    m_icon->hide();
    m_title->setTextFormat(Qt::PlainText);
    m_title->setWordWrap(true);
    m_title->setFont(interfaceFont(17, Weight::Bold));
    setTitle(title);

    auto* head = makeRow(nullptr, {}, iconGap);
    head->addWidget(m_icon, 0, Qt::AlignTop);
    head->addWidget(m_title, 1);
    m_content->setSpacing(14);
    m_buttons->setSpacing(10);
    m_buttons->addStretch();
    auto* column = makeColumn(this, (m_floats ? shadows::sheet.margins() : QMargins()) + padding, 14);
    column->addLayout(head);
    column->addLayout(m_content);
    column->addSpacing(4);
    column->addLayout(m_buttons);
    column->setSizeConstraint(QLayout::SetNoConstraint);
}

void SheetFrame::nameAfter(const QString& title)
{
    setWindowTitle(title);
    setAccessibleName(title);
}

void SheetFrame::setTitle(const QString& title)
{
    nameAfter(title);
    m_title->setText(breakableText(title));
}

void SheetFrame::setTitleLine(const QString& title)
{
    nameAfter(title);
    m_title->setFont(interfaceFont(18, Weight::Bold));
    m_title->setWordWrap(false);
    const int room = contentWidth() - (m_icon->isHidden() ? 0 : iconSide + iconGap);
    m_title->setText(QFontMetrics(m_title->font()).elidedText(title, Qt::ElideRight, room));
    m_title->setToolTip(m_title->text() == title ? QString() : title.toHtmlEscaped());
}

void SheetFrame::setIcon(Icon icon)
{
    m_icon->setPixmap(themedIcon(icon, theme::accent).pixmap(QSize(iconSide, iconSide), devicePixelRatioF()));
    m_icon->show();
}

int SheetFrame::contentWidth() const
{
    return m_width - 2 * padding;
}

Button* SheetFrame::addButton(Button::Kind kind, const QString& text)
{
    auto* button = new Button(kind, text, this);
    m_buttons->addWidget(button);
    return button;
}

QRect SheetFrame::sheet() const
{
    return m_floats ? rect().marginsRemoved(shadows::sheet.margins()) : rect();
}

// Texts that wrap tell their height only for a width, which the layout of a window would not ask them.
void SheetFrame::fit()
{
    const int width = m_width + this->width() - sheet().width();
    const int before = this->height();
    const int height = layout()->hasHeightForWidth() ? layout()->totalHeightForWidth(width)
                                                     : layout()->totalSizeHint().height();
    setFixedSize(width, height);
    if (height > before)
        keepOnScreen();
}

// It grows downwards, and its buttons are at the bottom.
void SheetFrame::keepOnScreen()
{
    if (!isVisible())
        return;
    const QRect room = screen()->availableGeometry();
    const QRect place = sheet().translated(pos());
    const int below = place.bottom() - room.bottom();
    const int above = place.top() - room.top();
    if (below > 0 && above > 0)
        move(x(), y() - std::min(below, above));
}

// Not every window manager gives the keyboard back to the window below.
void SheetFrame::setVisible(bool visible)
{
    const bool givesKeyboardBack = !visible && isActiveWindow();
    if (visible) {
        layout()->activate();
        fit();
    }
    QDialog::setVisible(visible);
    if (givesKeyboardBack && parentWidget() && parentWidget()->window()->isVisible())
        parentWidget()->activateWindow();
}

bool SheetFrame::event(QEvent* event)
{
    const bool handled = QDialog::event(event);
    if (event->type() == QEvent::LayoutRequest)
        fit();
    return handled;
}

void SheetFrame::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    if (m_floats) {
        drawCard(painter, sheet(), cornerRadius, shadows::sheet);
        return;
    }
    painter.fillRect(rect(), theme::surface);
    painter.setPen(theme::fieldBorder);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void SheetFrame::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && windowHandle())
        windowHandle()->startSystemMove();
}

} // namespace folvane
