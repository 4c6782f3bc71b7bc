#pragma once

#include "controls/paletteColors.h"
#include "controls/style/Theme.h"

#include <QWidget>

namespace folvane {

/// A hairline across a layout: `direction` is the one in which it runs.
inline QWidget* makeDivider(Qt::Orientation direction, QWidget* parent)
{
    auto* line = new QWidget(parent);
    setGround(*line, theme::hairline);
    direction == Qt::Horizontal ? line->setFixedHeight(1) : line->setFixedWidth(1);
    return line;
}

} // namespace folvane
