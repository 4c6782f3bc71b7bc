#include "controls/choices/ChoiceRow.h"

#include "controls/Spinner.h"
#include "controls/appearance.h"
#include "controls/style/Theme.h"
#include "controls/style/continuousRect.h"
#include "controls/style/icons.h"

#include <QPainter>

namespace folvane {

namespace {

constexpr QMargins padding{14, 10, 16, 10};
constexpr int circleSide = 20;
constexpr int gap = 12;
constexpr int lineGap = 2;
constexpr int spinnerSide = 16;
constexpr double cornerRadius = 12;

struct Fonts {
    QFont title = interfaceFont(14, Weight::SemiBold);
    QFont detail = interfaceFont(12);
    QFont value = interfaceFont(15, Weight::SemiBold);
};

int digitWidth(const QFontMetrics& metrics)
{
    int widest = 0;
    for (char16_t digit = u'0'; digit <= u'9'; ++digit)
        widest = std::max(widest, metrics.horizontalAdvance(QChar(digit)));
    return widest;
}

// Every digit in the same width, so that sizes under each other can be compared and do not move when they change.
void drawValue(QPainter& painter, const QRect& room, const QString& value)
{
    painter.setFont(Fonts().value);
    const QFontMetrics metrics = painter.fontMetrics();
    const int digit = digitWidth(metrics);
    int right = room.right() + 1;
    for (qsizetype i = value.size() - 1; i >= 0; --i) {
        const int width = value[i].isDigit() ? digit : metrics.horizontalAdvance(value[i]);
        right -= width;
        painter.drawText(QRect(right, room.top(), width, room.height()), Qt::AlignCenter | Qt::TextDontClip,
                         value.mid(i, 1));
    }
}

int valueWidth(const QString& value)
{
    const QFontMetrics metrics(Fonts().value);
    int width = 0;
    for (const QChar letter : value)
        width += letter.isDigit() ? digitWidth(metrics) : metrics.horizontalAdvance(letter);
    return width;
}

} // namespace

ChoiceRow::ChoiceRow(const QString& title, const QString& detail, QWidget* parent)
    : Painted(title, parent), m_detail(detail), m_spinner(new Spinner(spinnerSide, this))
{
    m_spinner->hide();
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAccessibleDescription(detail);
    refreshName();
}

int ChoiceRow::textLeft()
{
    return padding.left() + circleSide + gap;
}

void ChoiceRow::setTitle(const QString& title)
{
    if (title == text())
        return;
    setText(title);
    refreshName();
}

void ChoiceRow::setValue(const QString& value)
{
    showValue(value, false);
}

void ChoiceRow::setWaiting()
{
    showValue(QString(), true);
}

void ChoiceRow::showValue(const QString& value, bool waiting)
{
    m_value = value;
    m_spinner->setVisible(waiting);
    refreshName();
    update();
}

void ChoiceRow::refreshName()
{
    setAccessibleName(m_value.isEmpty() ? text() : tr("%1, %2").arg(text(), m_value));
}

QSize ChoiceRow::sizeHint() const
{
    const Fonts fonts;
    const QFontMetrics title(fonts.title);
    const QFontMetrics detail(fonts.detail);
    const int width = std::max(title.horizontalAdvance(text()), detail.horizontalAdvance(m_detail));
    return {textLeft() + width + gap + valueWidth(m_value) + padding.right(),
            padding.top() + title.height() + lineGap + detail.height() + padding.bottom()};
}

QRect ChoiceRow::words() const
{
    return rect().marginsRemoved(padding).adjusted(circleSide + gap, 0, 0, 0);
}

void ChoiceRow::resizeEvent(QResizeEvent*)
{
    m_spinner->move(width() - padding.right() - spinnerSide, (height() - spinnerSide) / 2);
}

void ChoiceRow::draw(QPainter& painter, const ControlState& state) const
{
    drawGround(painter, state);
    const QRectF circle(padding.left(), (height() - circleSide) / 2.0, circleSide, circleSide);
    drawIcon(painter, isChecked() ? Icon::RadioChecked : Icon::RadioUnchecked, circle,
             isChecked() ? theme::accent : theme::secondaryText);
    drawWords(painter);
    painter.setPen(theme::text);
    drawValue(painter, rect().marginsRemoved(padding), m_value);
}

void ChoiceRow::drawGround(QPainter& painter, const ControlState& state) const
{
    const QRectF frame = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    const QPainterPath path = continuousRect(frame, cornerRadius - 0.5);
    if (isChecked() && !state.isPressed)
        painter.fillPath(path, theme::faded(theme::accent, 0.05));
    else
        state.wash(painter, path);
    painter.strokePath(path, QPen(isChecked() ? theme::faded(theme::accent, 0.35) : theme::hairline, 1));
    if (state.hasFocus)
        painter.strokePath(continuousRect(QRectF(rect()).adjusted(1, 1, -1, -1), cornerRadius - 1),
                           QPen(theme::focus, 2));
}

void ChoiceRow::drawWords(QPainter& painter) const
{
    const Fonts fonts;
    painter.setFont(fonts.title);
    painter.setPen(theme::text);
    painter.drawText(words(), Qt::AlignLeft | Qt::AlignTop | Qt::TextSingleLine, text());
    painter.setFont(fonts.detail);
    painter.setPen(theme::secondaryText);
    painter.drawText(words(), Qt::AlignLeft | Qt::AlignBottom | Qt::TextSingleLine, m_detail);
}

} // namespace folvane
