#pragma once

class QColor;
class QWidget;

namespace folvane {

/// Fills the widget, all of it, with the colour.
void setGround(QWidget& widget, const QColor& color);

/// The colour of the text of a label.
void setTextColor(QWidget& label, const QColor& color);

} // namespace folvane
