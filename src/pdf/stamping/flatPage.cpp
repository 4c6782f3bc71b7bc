#include "pdf/stamping/flatPage.h"

#include "pdf/stamping/contentText.h"
#include "pdf/stamping/widgetLook.h"
#include "pdf/structure/pageAttributes.h"

#include <set>

namespace folvane::pdf {

namespace {

// What of a page has nothing to do with its content.
const std::set<std::string> keptEntries{"/Type", "/Parent", "/UserUnit", "/Group", "/Trans", "/Dur"};

QPDFObjectHandle arrayOf(const QRectF& box)
{
    return QPDFObjectHandle::newArray(
        {real(box.left()), real(box.top()), real(box.right()), real(box.bottom())});
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

/// The document says that the values in its fields are not drawn, or not as they are now.
bool hasStaleFields(QPDF& document)
{
    QPDFObjectHandle stale = document.getRoot().getKey("/AcroForm").getKeyIfDict("/NeedAppearances");
    return stale.isBool() && stale.getBoolValue();
}

bool isSeen(QPDFAnnotationObjectHelper& annotation)
{
    return (annotation.getFlags() & (an_invisible | an_hidden | an_no_view)) == 0;
}

/// As it looks on the screen; empty for one that is not seen there.
std::string drawn(QPDFAnnotationObjectHelper& annotation, int rotation, Resources& resources)
{
    QPDFObjectHandle appearance = annotation.getAppearanceStream("/N");
    if (!appearance.isStream() || !isSeen(annotation))
        return {};
    const std::string name = resources.add("/XObject", appearance);
    const std::string content = annotation.getPageContentForAppearance(name, rotation);
    QPDFObjectHandle layer = annotation.getObjectHandle().getKey("/OC");
    if (content.empty() || layer.isNull())
        return content;
    return "/OC " + resources.add("/Properties", layer) + " BDC\n" + content + "EMC\n";
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

void move(QPDFObjectHandle annotation, const QTransform& upright)
{
    if (QPDFObjectHandle rect = annotation.getKey("/Rect"); rect.isRectangle()) {
        const QPDFObjectHandle::Rectangle old = rect.getArrayAsRectangle();
        const QRectF box(QPointF(old.llx, old.lly), QPointF(old.urx, old.ury));
        annotation.replaceKey("/Rect", arrayOf(upright.mapRect(box)));
    }
    for (const char* points : {"/QuadPoints", "/L", "/Vertices", "/CL"})
        if (annotation.getKey(points).isArray())
            annotation.replaceKey(points, movedPoints(annotation.getKey(points), upright));
    QPDFObjectHandle strokes = annotation.getKey("/InkList");
    for (int i = 0; strokes.isArray() && i < strokes.getArrayNItems(); ++i)
        if (strokes.getArrayItem(i).isArray())
            strokes.setArrayItem(i, movedPoints(strokes.getArrayItem(i), upright));
    annotation.removeKey("/Popup");
}

/// What becomes of the annotations of a page.
struct Annotations {
    QPDF& document;
    QTransform upright;
    int rotation;
    bool areFieldsStale;
    QPDFObjectHandle pageResources;          ///< with which appearances draw that lack some of their own
    std::vector<QPDFObjectHandle> live = {}; ///< links, and what nobody has drawn: viewers go on drawing that
    std::vector<QPDFObjectHandle> widgets = {};

    void lendResources(QPDFObjectHandle appearance)
    {
        if (!appearance.isStream() || !pageResources.isDictionary())
            return;
        QPDFObjectHandle own = appearance.getDict().getKey("/Resources");
        QPDFObjectHandle all = own.isDictionary() ? own.shallowCopy() : QPDFObjectHandle::newDictionary();
        for (const std::string& kind : pageResources.getKeys())
            if (!all.hasKey(kind))
                all.replaceKey(kind, pageResources.getKey(kind));
        appearance.getDict().replaceKey("/Resources", all);
    }

    /// What is drawn of it from now on.
    std::string take(QPDFObjectHandle object, Resources& resources)
    {
        if (!object.isDictionary())
            return {};
        QPDFAnnotationObjectHelper annotation(object);
        const std::string kind = annotation.getSubtype();
        const bool isDrawn = annotation.getAppearanceStream("/N").isStream();
        if (kind == "/Widget") {
            widgets.push_back(object);
            if (!isDrawn)
                drawWidget(document, object);
            else if (areFieldsStale)
                drawValue(document, object);
        } else if (kind == "/Link" || (!isDrawn && kind != "/Popup" && isSeen(annotation))) {
            move(object, upright);
            live.push_back(object);
            return {};
        }
        lendResources(annotation.getAppearanceStream("/N"));
        return kind == "/Popup" ? std::string() : drawn(annotation, rotation, resources);
    }
};

void noteStructureKey(QPDFObjectHandle owner, const char* entry, FlatPage& flat)
{
    QPDFObjectHandle key = owner.getKeyIfDict(entry);
    if (!key.isInteger())
        return;
    flat.structureKeys.push_back(key.getIntValue());
    owner.removeKey(entry);
}

} // namespace

// A page is turned clockwise; the corner of its crop box that is then the lower left one goes to the origin.
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
    Annotations annotations{document, upright, geometry.rotation, hasStaleFields(document),
                            QPDFPageObjectHelper(page).getAttribute("/Resources", false)};
    for (QPDFObjectHandle& annotation : annotationsOf(page)) {
        noteStructureKey(annotation, "/StructParent", flat);
        content += annotations.take(annotation, resources);
    }
    flat.widgets = annotations.widgets;
    flat.content = QByteArray::fromStdString(content + "Q\n");
    for (const std::string& key : page.getKeys())
        if (!keptEntries.contains(key))
            page.removeKey(key);
    page.replaceKey("/MediaBox", arrayOf(QRectF(QPointF(), flat.size)));
    if (!annotations.live.empty())
        page.replaceKey("/Annots", QPDFObjectHandle::newArray(annotations.live));
    return flat;
}

} // namespace folvane::pdf
