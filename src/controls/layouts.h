#pragma once

#include <QBoxLayout>

namespace folvane {

// Layouts of a widget, or of none to be put into another layout, with all that a layout can be told at first.

template <typename Layout>
Layout* makeLayout(QWidget* of, const QMargins& margins, int spacing)
{
    auto* layout = new Layout(of);
    layout->setContentsMargins(margins);
    layout->setSpacing(spacing);
    return layout;
}

inline QHBoxLayout* makeRow(QWidget* of, const QMargins& margins, int spacing)
{
    return makeLayout<QHBoxLayout>(of, margins, spacing);
}

inline QVBoxLayout* makeColumn(QWidget* of, const QMargins& margins, int spacing)
{
    return makeLayout<QVBoxLayout>(of, margins, spacing);
}

} // namespace folvane
