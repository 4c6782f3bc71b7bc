#include "pdf/stamping/flatPage.h"

#include "pdf/stamping/contentText.h"
#include "pdf/structure/pageAttributes.h"

#include <set>

namespace folvane::pdf {

namespace {

// What of a page has nothing to do with its content.
const std::set<std::string> keptEntries{"/Type", "/Parent", "/UserUnit", "/Group", "/Trans", "/Dur"};

QPDFObjectHandle arrayOf(const QRectF& box)
{
    return QPDFObjectHandle::newFromRectangle(
        QPDFObjectHandle::Rectangle(box.left(), box.top(), box.right(), box.bottom()));
}

/// The same data, as they are stored where there is but one stream.
QPDFObjectHandle contentAsStream(QPDF& document, QPDFObjectHandle page)
{
    QPDFObjectHandle contents = page.getKey("/Contents");
    if (contents.isArray() && contents.getArrayNItems() == 1)
        contents = contents.getArrayItem(0);
    if (contents.isStream())
        return contents.copyStream();
    QPDFObjectHandle old = document.makeIndirectObject(page.unsafeShallowCopy()); // goes on having them
    return QPDFPageObjectHelper(old).getFormXObjectForPage(false);
}

QPDFObjectHandle formOf(QPDF& document, QPDFObjectHandle page, const PageGeometry& geometry)
{
    QPDFObjectHandle form = contentAsStream(document, page);
    QPDFObjectHandle dictionary = form.getDict();
    dictionary.replaceKey("/Type", QPDFObjectHandle::newName("/XObject"));
    dictionary.replaceKey("/Subtype", QPDFObjectHandle::newName("/Form"));
    dictionary.replaceKey("/BBox", arrayOf(geometry.cropBox));
    dictionary.replaceKey("/Resources", QPDFPageObjectHelper(page).getAttribute("/Resources", false));
    dictionary.removeKey("/Matrix");
    if (page.hasKey("/Group"))
        dictionary.replaceKey("/Group", page.getKey("/Group"));
    return form;
}

/// The names that content gives to what it uses.
class Resources {
public:
    QPDFObjectHandle dictionary() const { return m_dictionary; }

    /// "/XObject3".
    std::string add(const std::string& kind, const QPDFObjectHandle& object)
    {
        if (!m_dictionary.hasKey(kind))
            m_dictionary.replaceKey(kind, QPDFObjectHandle::newDictionary());
        const std::string name = kind + std::to_string(++m_last);
        m_dictionary.getKey(kind).replaceKey(name, object);
        return name;
    }

private:
    QPDFObjectHandle m_dictionary = QPDFObjectHandle::newDictionary();
    int m_last = 0;
};

/// A field whose value nobody has drawn yet.
void drawValue(QPDFObjectHandle widget)
{
    QPDFAnnotationObjectHelper annotation(widget);
    if (annotation.getAppearanceStream("/N").isNull())
        QPDFFormFieldObjectHelper(widget).generateAppearance(annotation);
}

/// As it looks on the screen; empty for one that is not seen there.
std::string drawn(QPDFObjectHandle annotation, int rotation, Resources& resources)
{
    QPDFAnnotationObjectHelper helper(annotation);
    QPDFObjectHandle appearance = helper.getAppearanceStream("/N");
    if (!appearance.isStream() || helper.getSubtype() == "/Popup")
        return {};
    const std::string name = resources.add("/XObject", appearance);
    const std::string content =
        helper.getPageContentForAppearance(name, rotation, 0, an_invisible | an_hidden | an_no_view);
    if (content.empty() || !annotation.hasKey("/OC"))
        return content;
    return "/OC " + resources.add("/Properties", annotation.getKey("/OC")) + " BDC\n" + content + "EMC\n";
}

QPDFObjectHandle movedPoints(QPDFObjectHandle points, const QTransform& upright)
{
    std::vector<QPDFObjectHandle> moved;
    for (int i = 0; i + 1 < points.getArrayNItems(); i += 2) {
        const QPointF point = upright.map(
            QPointF(points.getArrayItem(i).getNumericValue(), points.getArrayItem(i + 1).getNumericValue()));
        moved.push_back(real(point.x()));
        moved.push_back(real(point.y()));
    }
    return QPDFObjectHandle::newArray(moved);
}

void moveLink(QPDFObjectHandle link, const QTransform& upright)
{
    if (QPDFObjectHandle rect = link.getKey("/Rect"); rect.isRectangle()) {
        const QPDFObjectHandle::Rectangle old = rect.getArrayAsRectangle();
        link.replaceKey(
            "/Rect", arrayOf(upright.mapRect(QRectF(QPointF(old.llx, old.lly), QPointF(old.urx, old.ury)))));
    }
    if (link.getKey("/QuadPoints").isArray())
        link.replaceKey("/QuadPoints", movedPoints(link.getKey("/QuadPoints"), upright));
}

std::string nameOf(QPDFObjectHandle dictionary, const std::string& key)
{
    QPDFObjectHandle value = dictionary.getKeyIfDict(key);
    return value.isName() ? value.getName() : std::string();
}

void noteStructureKey(QPDFObjectHandle owner, const char* entry, FlatPage& flat)
{
    QPDFObjectHandle key = owner.getKeyIfDict(entry);
    if (!key.isInteger())
        return;
    flat.structureKeys.push_back(key.getIntValue());
    owner.removeKey(entry);
}

} // namespace

// Upright is what is on the page's left, bottom, right and top after a turn: so far each goes to a side of the new one.
QTransform uprightFrom(const PageGeometry& page)
{
    const QRectF box = page.cropBox; // its top is the lower edge: PDF counts upwards
    const double left = box.left(), bottom = box.top(), right = box.right(), top = box.bottom();
    switch (page.rotation) {
    case 90: return {0, -1, 1, 0, -bottom, right};
    case 180: return {-1, 0, 0, -1, right, top};
    case 270: return {0, 1, -1, 0, top, -left};
    default: return {1, 0, 0, 1, -left, -bottom};
    }
}

FlatPage flatten(QPDF& document, QPDFObjectHandle page, const PageGeometry& geometry)
{
    const QTransform upright = uprightFrom(geometry);
    const QSizeF size = geometry.displaySize(0);
    Resources resources;
    const std::string form = resources.add("/XObject", formOf(document, page, geometry));
    std::string content = "q\n" + matrix(upright) + " cm\n" + form + " Do\n";
    FlatPage flat{size, {}, resources.dictionary(), {}, {}};
    noteStructureKey(page, "/StructParents", flat);
    QPDFObjectHandle links = QPDFObjectHandle::newArray();
    for (QPDFObjectHandle& annotation : annotationsOf(page)) {
        const std::string kind = nameOf(annotation, "/Subtype");
        noteStructureKey(annotation, "/StructParent", flat);
        if (kind == "/Widget") {
            flat.widgets.push_back(annotation);
            drawValue(annotation);
        }
        if (kind == "/Link") {
            moveLink(annotation, upright);
            links.appendItem(annotation);
        } else {
            content += drawn(annotation, geometry.rotation, resources);
        }
    }
    flat.content = QByteArray::fromStdString(content + "Q\n");
    for (const std::string& key : page.getKeys())
        if (!keptEntries.contains(key))
            page.removeKey(key);
    page.replaceKey("/MediaBox", arrayOf(QRectF(QPointF(), flat.size)));
    if (links.getArrayNItems() > 0)
        page.replaceKey("/Annots", links);
    return flat;
}

void setContent(QPDF& document, QPDFObjectHandle page, const FlatPage& flat)
{
    page.replaceKey("/Resources", flat.resources);
    page.replaceKey("/Contents", document.newStream(flat.content.toStdString()));
}

} // namespace folvane::pdf
