#include "tools/drawing/DrawingPad.h"

#include "controls/Button.h"
#include "controls/layouts.h"
#include "tools/drawing/DrawingCanvas.h"
#include "tools/drawing/inkPicker.h"

namespace folvane {

DrawingPad::DrawingPad(QSize size, QWidget* parent)
    : QWidget(parent),
      m_canvas(new DrawingCanvas(size, this)),
      m_ink(makeInkPicker(tr("Ink"), m_canvas->drawing().ink, this)),
      m_clear(new Button(Button::Kind::Secondary, tr("Clear"), this)),
      m_use(new Button(Button::Kind::Primary, tr("Use This Signature"), this))
{
    auto* row = makeRow(nullptr, {}, 10);
    row->addWidget(m_ink);
    row->addStretch();
    row->addWidget(m_clear);
    row->addWidget(m_use);
    auto* column = makeColumn(this, {}, 16);
    column->addWidget(m_canvas);
    column->addLayout(row);
    connect(m_ink, &SegmentedPicker::currentChanged, this, [this] { m_canvas->setInk(inkOf(*m_ink)); });
    connect(m_clear, &Button::clicked, m_canvas, &DrawingCanvas::clear);
    connect(m_use, &Button::clicked, this, [this] { emit used(m_canvas->drawing()); });
    connect(m_canvas, &DrawingCanvas::strokesChanged, this, &DrawingPad::refresh);
    refresh();
}

void DrawingPad::refresh()
{
    const bool isEmpty = m_canvas->drawing().strokes.isEmpty();
    m_clear->setEnabled(!isEmpty);
    m_use->setEnabled(!isEmpty);
}

} // namespace folvane
