#include "controls/choices/CheckBox.h"

#include "controls/appearance.h"
#include "controls/style/Theme.h"
#include "controls/style/continuousRect.h"
#include "controls/style/icons.h"

namespace folvane {

namespace {

constexpr int boxSide = 20;
constexpr int gap = 8;
constexpr int padding = 6; // around both, for what marks the pointer and the focus
constexpr double cornerRadius = 8;

} // namespace

CheckBox::CheckBox(const QString& title, QWidget* parent) : Painted(title, parent)
{
    setFont(interfaceFont(13));
    setFocusPolicy(Qt::TabFocus); // a click leaves the keyboard where it works
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize CheckBox::sizeHint() const
{
    const QSize words = fontMetrics().size(Qt::TextSingleLine | Qt::TextShowMnemonic, text());
    return {padding + boxSide + gap + words.width() + padding,
            std::max(boxSide, words.height()) + 2 * padding};
}

void CheckBox::draw(QPainter& painter, const ControlState& state) const
{
    const QRectF frame = rect();
    state.wash(painter, continuousRect(frame, cornerRadius));
    const QRectF box(padding, (height() - boxSide) / 2.0, boxSide, boxSide);
    drawIcon(painter, isChecked() ? Icon::BoxChecked : Icon::BoxUnchecked, box,
             theme::faded(isChecked() ? theme::accent : theme::secondaryText, state.opacity()));
    painter.setPen(theme::faded(theme::text, state.opacity()));
    painter.drawText(frame.adjusted(padding + boxSide + gap, 0, 0, 0),
                     Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine | Qt::TextShowMnemonic, text());
    if (state.hasFocus)
        painter.strokePath(continuousRect(frame.adjusted(1, 1, -1, -1), cornerRadius - 1),
                           QPen(theme::focus, 2));
}

} // namespace folvane
