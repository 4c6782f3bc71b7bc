#include "pdf/stamping/liveFields.h"

namespace folvane::pdf {

namespace {

/// Whether something is left of it.
bool eraseFrom(QPDFObjectHandle array, const ObjGenSet& gone)
{
    for (int i = array.isArray() ? array.getArrayNItems() - 1 : -1; i >= 0; --i)
        if (gone.contains(array.getArrayItem(i).getObjGen()))
            array.eraseItem(i);
    return array.isArray() && array.getArrayNItems() > 0;
}

/// The widget, and upwards each field that is left without kids.
void takeOut(QPDFObjectHandle widget, ObjGenSet& gone)
{
    constexpr int deepest = 100;
    QPDFObjectHandle field = widget;
    for (int depth = 0; depth < deepest && field.isDictionary(); ++depth) {
        gone.insert(field.getObjGen());
        QPDFObjectHandle parent = field.getKey("/Parent");
        if (!parent.isDictionary() || eraseFrom(parent.getKey("/Kids"), gone))
            return;
        field = parent;
    }
}

} // namespace

void removeFields(QPDF& document, const std::vector<QPDFObjectHandle>& widgets)
{
    QPDFObjectHandle form = document.getRoot().getKey("/AcroForm");
    if (!form.isDictionary() || widgets.empty())
        return;
    ObjGenSet gone;
    for (const QPDFObjectHandle& widget : widgets)
        takeOut(widget, gone);
    eraseFrom(form.getKey("/CO"), gone);
    if (!eraseFrom(form.getKey("/Fields"), gone))
        document.getRoot().removeKey("/AcroForm");
}

} // namespace folvane::pdf
