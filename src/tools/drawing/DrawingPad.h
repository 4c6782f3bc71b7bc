#pragma once

#include "tools/drawing/InkDrawing.h"

#include <QWidget>

namespace folvane {

class Button;
class DrawingCanvas;
class SegmentedPicker;

/// Where a signature is drawn by hand, in one of the inks.
class DrawingPad : public QWidget {
    Q_OBJECT

public:
    /// `size` is that of the paper.
    explicit DrawingPad(QSize size, QWidget* parent = nullptr);

signals:
    void used(folvane::InkDrawing drawing);

private:
    void refresh();

    DrawingCanvas* m_canvas;
    SegmentedPicker* m_ink;
    Button* m_clear;
    Button* m_use;
};

} // namespace folvane
