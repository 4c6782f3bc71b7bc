#include "tools/stamps/StampButton.h"

#include "controls/layouts.h"
#include "controls/style/Theme.h"
#include "controls/style/continuousRect.h"
#include "tools/stamps/StampTile.h"

namespace folvane {

namespace {

constexpr int tileHeight = 76;
constexpr double ringRadius = CheckeredPicture::cornerRadius + 2;

} // namespace

StampButton::StampButton(AppModel& model, const QUuid& stamp, QWidget* parent)
    : PaintedButton(QString(), Qt::TabFocus, parent)
{
    auto* tile = new StampTile(model, stamp, tileHeight, this);
    tile->setAttribute(Qt::WA_TransparentForMouseEvents);
    makeColumn(this, QMargins() + margin, 0)->addWidget(tile);
    setToolTip(tr("Put on this page"));
    setCursor(Qt::PointingHandCursor);
    m_watches.keep(
        [this, &model, stamp] {
            const std::optional<StampRecord> record = model.stamps.record(stamp);
            if (record && record->name != accessibleName())
                setAccessibleName(record->name);
        },
        model.stamps.stamps);
}

QSize StampButton::sizeHint() const
{
    return layout()->sizeHint();
}

void StampButton::draw(QPainter& painter, const ControlState& state) const
{
    if (!state.hasFocus && !state.isUnderPointer)
        return;
    const QColor ring = state.hasFocus || state.isPressed ? theme::focus : theme::fieldBorder;
    painter.strokePath(continuousRect(QRectF(rect()).adjusted(1, 1, -1, -1), ringRadius), QPen(ring, 2));
}

} // namespace folvane
