#include "pdf/structure/FormTree.h"

namespace folvane::pdf {

namespace {

/// Damaged forms list fonts and page trees among their fields.
bool isField(QPDFObjectHandle object)
{
    if (!object.isDictionary()
        || (object.hasKey("/Type") && !object.getKey("/Type").isNameAndEquals("/Annot")))
        return false;
    return object.hasKey("/FT") || object.hasKey("/T") || object.hasKey("/Kids") || object.hasKey("/Parent")
           || object.getKey("/Subtype").isNameAndEquals("/Widget");
}

void addNodes(FormTree& tree, QPDFObjectHandle fields, int parent, ObjGenSet& seen)
{
    if (!fields.isArray())
        return;
    for (QPDFObjectHandle field : fields.getArrayAsVector()) {
        if (!field.isIndirect() || !isField(field) || !seen.insert(field.getObjGen()).second)
            continue;
        tree.nodes.push_back({field, parent});
    }
}

} // namespace

FormTree FormTree::read(QPDFObjectHandle catalogue)
{
    FormTree tree;
    QPDFObjectHandle form = catalogue.getKey("/AcroForm");
    if (!form.isDictionary())
        return tree;
    ObjGenSet seen;
    addNodes(tree, form.getKey("/Fields"), -1, seen);
    for (size_t i = 0; i < tree.nodes.size(); ++i) // grows while it is walked: breadth first
        addNodes(tree, tree.nodes[i].field.getKey("/Kids"), static_cast<int>(i), seen);
    return tree;
}

} // namespace folvane::pdf
