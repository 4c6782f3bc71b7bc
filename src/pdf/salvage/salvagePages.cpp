#include "pdf/salvage/salvagePages.h"

#include <algorithm>
#include <deque>
#include <set>

namespace folvane::pdf::salvage {

namespace {

constexpr int mostLevels = 100; // on the way up from a lost node; trees are much flatter

QByteArray joined(const std::vector<QByteArray>& items)
{
    QByteArray text = "[";
    for (const QByteArray& item : items)
        text += item + ' ';
    return text + ']';
}

/// The dictionary's text with some entries replaced or added; one without a value is taken out, and so is
/// each old one with a damaged value.
QByteArray withEntries(const Dictionary& dictionary,
                       const std::vector<std::pair<QByteArray, QByteArray>>& replaced)
{
    const auto isReplaced = [&](QByteArrayView key) {
        return std::any_of(replaced.begin(), replaced.end(),
                           [&](const auto& entry) { return entry.first == key; });
    };
    QByteArray text = "<<";
    for (const Entry& entry : dictionary.entries()) {
        if (!isReplaced(entry.key) && isSound(entry.value))
            text.append(entry.key).append(' ').append(entry.value).append('\n');
    }
    for (const auto& [key, value] : replaced) {
        if (!value.isEmpty())
            text += key + ' ' + value + '\n';
    }
    return text + ">>";
}

/// A page is one with kids or not, as for other readers.
bool isTreeNode(const Dictionary& dictionary)
{
    return !dictionary.value("/Kids").isEmpty() && dictionary.value("/Type") != "/Page";
}

/// A node on a walk through the tree, in the order of the walk.
struct Visited {
    Reference id;
    size_t parent = 0; // its place on the walk; the root is its own
    std::vector<QByteArray> kids;
    qint64 pages = 0;
    bool lostKids = false;
};

/// An object that says that it belongs to the tree.
struct TreeObject {
    Reference id;
    QByteArrayView type;
    std::optional<Reference> parent;
};

std::vector<TreeObject> treeObjects(const FoundObjects& objects)
{
    std::vector<const FoundObject*> ordered;
    for (const auto& [number, found] : objects) {
        const QByteArrayView type = found.isStream ? QByteArrayView() : typeOf(found);
        if (type == "/Page" || type == "/Pages" || type == "/Catalog")
            ordered.push_back(&found);
    }
    std::sort(ordered.begin(), ordered.end(), [](const FoundObject* a, const FoundObject* b) {
        return std::pair(a->position, a->index) < std::pair(b->position, b->index);
    });
    std::vector<TreeObject> tree;
    for (const FoundObject* found : ordered) {
        const Dictionary dictionary(found->value);
        tree.push_back({found->id, dictionary.value("/Type"), asReference(dictionary.value("/Parent"))});
    }
    return tree;
}

class TreeBuilder {
public:
    explicit TreeBuilder(const FoundObjects& objects) : m_objects(objects), m_tree(treeObjects(objects)) {}

    std::optional<PageTree> build(std::optional<Reference> preferred);

private:
    const FoundObject* object(Reference id) const;
    Dictionary dictionary(Reference id) const;
    bool isNode(Reference id) const { return isTreeNode(dictionary(id)); }
    std::optional<Reference> findCatalogue(std::optional<Reference> preferred) const;

    void makeLostParents();
    std::vector<QByteArrayView> kidsOf(const Dictionary& node);
    qint64 walk(Reference root);
    void takeKids(std::vector<Visited>& nodes, size_t place);
    bool takeKid(std::vector<Visited>& nodes, size_t place, QByteArrayView kid);
    bool takeNewKid(std::vector<Visited>& nodes, size_t place, std::optional<Reference> id,
                    const Dictionary& kid);
    void mend(const std::vector<Visited>& nodes);
    Reference topAbove(Reference node) const;
    void takeRoot(Reference root);
    void takeOtherRoots();
    void takeLoosePages();
    void replace(Reference id, const QByteArray& value);
    void repair(Reference id);
    Reference added(const QByteArray& value);
    PageTree underNewRoot(std::optional<Reference> catalogue);
    PageTree result(Reference catalogue);

    const FoundObjects& m_objects;
    std::vector<TreeObject> m_tree;
    FoundObjects m_made;            // hides what has the same number in m_objects
    std::deque<QByteArray> m_texts; // of m_made
    std::vector<Reference> m_madeParents;
    std::set<int> m_seen;  // what was looked at on the walks
    std::set<int> m_pages; // those of it that are pages
    bool m_lostKids = false;
    std::vector<QByteArray> m_newKids; // of the new root
    qint64 m_newCount = 0;
};

const FoundObject* TreeBuilder::object(Reference id) const
{
    const FoundObjects& objects = m_made.contains(id.number) ? m_made : m_objects;
    const auto found = objects.find(id.number);
    return found != objects.end() && found->second.id == id && !found->second.isStream ? &found->second
                                                                                       : nullptr;
}

Dictionary TreeBuilder::dictionary(Reference id) const
{
    const FoundObject* found = object(id);
    return found ? Dictionary(found->value) : Dictionary();
}

std::optional<Reference> TreeBuilder::findCatalogue(std::optional<Reference> preferred) const
{
    if (preferred && !dictionary(*preferred).value("/Pages").isEmpty())
        return preferred;
    const auto last = std::find_if(m_tree.rbegin(), m_tree.rend(),
                                   [](const TreeObject& object) { return object.type == "/Catalog"; });
    return last == m_tree.rend() ? std::nullopt : std::optional(last->id);
}

void TreeBuilder::replace(Reference id, const QByteArray& value)
{
    const QByteArray& kept = m_texts.emplace_back(value);
    FoundObject made;
    made.id = id;
    made.value = kept;
    m_made[id.number] = made;
}

/// Leaves out what a stricter reader would stumble over.
void TreeBuilder::repair(Reference id)
{
    if (!isSound(object(id)->value))
        replace(id, withEntries(dictionary(id), {}));
}

Reference TreeBuilder::added(const QByteArray& value)
{
    const auto last = [](const FoundObjects& objects) {
        return objects.empty() ? 0 : objects.rbegin()->first;
    };
    const Reference id{std::max(last(m_objects), last(m_made)) + 1, 0};
    replace(id, value);
    return id;
}

/// A lost node is known by the /Parent of what stood below it.
void TreeBuilder::makeLostParents()
{
    std::map<int, std::pair<Reference, std::vector<QByteArray>>> orphans;
    for (const TreeObject& child : m_tree) {
        if (child.type == "/Catalog" || !child.parent || m_objects.contains(child.parent->number))
            continue;
        auto& [parent, kids] = orphans[child.parent->number];
        parent = *child.parent;
        kids.push_back(asText(child.id));
    }
    for (const auto& [number, group] : orphans) {
        replace(group.first, "<< /Type /Pages /Kids " + joined(group.second) + " >>");
        m_madeParents.push_back(group.first);
    }
}

/// An array that several nodes share counts for the first only.
std::vector<QByteArrayView> TreeBuilder::kidsOf(const Dictionary& node)
{
    const QByteArrayView kids = node.value("/Kids");
    const auto elsewhere = asReference(kids);
    if (!elsewhere)
        return asArray(kids);
    const FoundObject* array = object(*elsewhere);
    return array && m_seen.insert(elsewhere->number).second ? asArray(array->value)
                                                            : std::vector<QByteArrayView>();
}

bool TreeBuilder::takeNewKid(std::vector<Visited>& nodes, size_t place, std::optional<Reference> id,
                             const Dictionary& kid)
{
    const QByteArrayView type = kid.value("/Type");
    if (kid.entries().empty())
        return false;
    if (isTreeNode(kid)) {
        if (id)
            nodes.push_back({*id, place, {}});
        return id.has_value();
    }
    if (!type.isEmpty() && type != "/Page")
        return false;
    ++nodes[place].pages;
    if (id) {
        m_pages.insert(id->number);
        repair(*id);
    }
    return true;
}

/// True when the kid is a page, or a node that was not met before. Each object is read once, however often it
/// is referred to; a tree may show a page twice.
bool TreeBuilder::takeKid(std::vector<Visited>& nodes, size_t place, QByteArrayView kid)
{
    const auto id = asReference(kid);
    if (!id)
        return takeNewKid(nodes, place, id, Dictionary(kid));
    if (m_seen.insert(id->number).second)
        return takeNewKid(nodes, place, id, dictionary(*id));
    const bool isPage = m_pages.contains(id->number);
    nodes[place].pages += isPage ? 1 : 0;
    return isPage;
}

void TreeBuilder::takeKids(std::vector<Visited>& nodes, size_t place)
{
    const Dictionary node = dictionary(nodes[place].id);
    for (const QByteArrayView kid : kidsOf(node)) {
        if (takeKid(nodes, place, kid))
            nodes[place].kids.push_back(kid.toByteArray());
        else
            nodes[place].lostKids = true;
    }
}

/// Frees what is below a root from lost kids. Gives back how many pages there are.
qint64 TreeBuilder::walk(Reference root)
{
    if (!isNode(root) || !m_seen.insert(root.number).second)
        return 0;
    std::vector<Visited> nodes;
    nodes.push_back({root, 0, {}});
    for (size_t place = 0; place < nodes.size(); ++place)
        takeKids(nodes, place);
    for (size_t place = nodes.size() - 1; place > 0; --place)
        nodes[nodes[place].parent].pages += nodes[place].pages;
    mend(nodes);
    return nodes.front().pages;
}

void TreeBuilder::mend(const std::vector<Visited>& nodes)
{
    for (size_t place = 0; place < nodes.size(); ++place) {
        const Visited& node = nodes[place];
        const Dictionary old = dictionary(node.id);
        const bool rootHasParent = place == 0 && !old.value("/Parent").isEmpty();
        m_lostKids = m_lostKids || node.lostKids;
        const bool isRight = !node.lostKids && !rootHasParent && asInteger(old.value("/Count")) == node.pages;
        if (isRight && isSound(object(node.id)->value))
            continue;
        const QByteArray parent = place == 0 ? QByteArray() : asText(nodes[node.parent].id);
        replace(node.id, withEntries(old, {{"/Kids", joined(node.kids)},
                                           {"/Count", QByteArray::number(node.pages)},
                                           {"/Parent", parent}}));
    }
}

Reference TreeBuilder::topAbove(Reference node) const
{
    for (int steps = 0; steps < mostLevels; ++steps) {
        const auto parent = asReference(dictionary(node).value("/Parent"));
        if (!parent || !isNode(*parent))
            break;
        node = *parent;
    }
    return node;
}

void TreeBuilder::takeRoot(Reference root)
{
    const qint64 pages = walk(root);
    if (pages > 0)
        m_newKids.push_back(asText(root));
    m_newCount += pages;
}

void TreeBuilder::takeOtherRoots()
{
    for (const TreeObject& node : m_tree) {
        if (node.type == "/Pages" && !m_seen.contains(node.id.number))
            takeRoot(topAbove(node.id));
    }
}

void TreeBuilder::takeLoosePages()
{
    for (const TreeObject& page : m_tree) {
        if (page.type != "/Page" || isNode(page.id) || !m_seen.insert(page.id.number).second)
            continue;
        repair(page.id);
        m_newKids.push_back(asText(page.id));
        ++m_newCount;
    }
}

PageTree TreeBuilder::underNewRoot(std::optional<Reference> catalogue)
{
    const Reference root = added("<< /Type /Pages /Kids " + joined(m_newKids) + " /Count "
                                 + QByteArray::number(m_newCount) + " >>");
    if (!catalogue)
        return result(added("<< /Type /Catalog /Pages " + asText(root) + " >>"));
    replace(*catalogue,
            withEntries(dictionary(*catalogue), {{"/Type", "/Catalog"}, {"/Pages", asText(root)}}));
    return result(*catalogue);
}

PageTree TreeBuilder::result(Reference catalogue)
{
    repair(catalogue);
    PageTree tree{catalogue, {}};
    for (const auto& [number, made] : m_made)
        tree.made.push_back({made.id, made.value.toByteArray()});
    return tree;
}

std::optional<PageTree> TreeBuilder::build(std::optional<Reference> preferred)
{
    makeLostParents();
    const auto catalogue = findCatalogue(preferred);
    const auto root = catalogue ? asReference(dictionary(*catalogue).value("/Pages")) : std::nullopt;
    if (root)
        takeRoot(*root);
    const bool hasRoot = m_newCount > 0;
    if (hasRoot && !m_lostKids)
        return result(*catalogue);

    for (const Reference parent : m_madeParents)
        takeRoot(topAbove(parent));
    if (!hasRoot) {
        takeOtherRoots();
        takeLoosePages();
    }
    if (hasRoot && m_newKids.size() == 1)
        return result(*catalogue);
    return m_newCount > 0 ? std::optional(underNewRoot(catalogue)) : std::nullopt;
}

} // namespace

std::optional<PageTree> pageTree(const FoundObjects& objects, std::optional<Reference> preferred)
{
    return TreeBuilder(objects).build(preferred);
}

} // namespace folvane::pdf::salvage
