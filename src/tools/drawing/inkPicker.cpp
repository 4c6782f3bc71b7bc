#include "tools/drawing/inkPicker.h"

namespace folvane {

SegmentedPicker* makeInkPicker(const QString& name, StampInk chosen, QWidget* parent)
{
    QStringList titles;
    for (const StampInk ink : stampInks)
        titles.append(labelOf(ink));
    auto* picker = new SegmentedPicker(name, titles, parent);
    picker->setCurrent(int(chosen)); // stampInks has the order of the enumeration
    return picker;
}

StampInk inkOf(const SegmentedPicker& picker)
{
    return stampInks.at(size_t(picker.current()));
}

} // namespace folvane
