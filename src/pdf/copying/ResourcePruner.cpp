#include "pdf/copying/ResourcePruner.h"

#include <array>

namespace folvane::pdf {

namespace {

constexpr std::array categories{"/XObject", "/Font",    "/ExtGState", "/ColorSpace",
                                "/Pattern", "/Shading", "/Properties"};
constexpr int depthLimit = 64;

/// Colour spaces that stand in for device colours without being named by any operator.
bool isNeededUnnamed(const std::string& key)
{
    return key == "/DefaultGray" || key == "/DefaultRGB" || key == "/DefaultCMYK";
}

QPDFObjectHandle prunedCategory(QPDFObjectHandle category, const NameSet& names)
{
    std::map<std::string, QPDFObjectHandle> kept;
    const std::map<std::string, QPDFObjectHandle> all = category.getDictAsMap();
    for (const auto& [key, value] : all) {
        if (names.count(key) || isNeededUnnamed(key))
            kept.emplace(key, value);
    }
    return kept.size() == all.size() ? category : QPDFObjectHandle::newDictionary(kept);
}

/// The forms that an annotation can look like, of all its states.
std::vector<QPDFObjectHandle> appearancesOf(QPDFObjectHandle annotation)
{
    std::vector<QPDFObjectHandle> forms;
    QPDFObjectHandle appearances = annotation.getKey("/AP");
    if (!appearances.isDictionary())
        return forms;
    for (auto& [occasion, appearance] : appearances.getDictAsMap()) {
        if (appearance.isStream())
            forms.push_back(appearance);
        if (!appearance.isDictionary())
            continue;
        for (auto& [state, form] : appearance.getDictAsMap()) {
            if (form.isStream())
                forms.push_back(form);
        }
    }
    return forms;
}

} // namespace

QPDFObjectHandle ResourcePruner::pruned(QPDFObjectHandle resources, QPDFObjectHandle contents,
                                        const std::vector<QPDFObjectHandle>& annotations)
{
    if (!resources.isDictionary())
        return resources;
    std::optional<NameSet> names = contentNames(contents);
    if (!names || !addAppearances(annotations, *names) || !addBorrowed(resources, *names))
        return resources;

    std::map<std::string, QPDFObjectHandle> kept = resources.getDictAsMap();
    bool changed = false;
    for (const char* key : categories) {
        const auto category = kept.find(key);
        if (category == kept.end() || !category->second.isDictionary())
            continue;
        QPDFObjectHandle fewer = prunedCategory(category->second, *names);
        changed = changed || !fewer.isSameObjectAs(category->second);
        category->second = fewer;
    }
    return changed ? QPDFObjectHandle::newDictionary(kept) : resources;
}

bool ResourcePruner::addAppearances(const std::vector<QPDFObjectHandle>& annotations, NameSet& names)
{
    for (const QPDFObjectHandle& annotation : annotations) {
        for (const QPDFObjectHandle& appearance : appearancesOf(annotation)) {
            const Borrowed& borrowed = borrowedBy(appearance, 0);
            if (!borrowed)
                return false;
            names.insert(borrowed->begin(), borrowed->end());
        }
    }
    return true;
}

/// What a named resource borrows may itself borrow, so this goes on until no name is new.
bool ResourcePruner::addBorrowed(QPDFObjectHandle resources, NameSet& names)
{
    NameSet done;
    for (size_t before = 0; before != names.size();) {
        before = names.size();
        for (const char* key : {"/XObject", "/Font", "/ExtGState", "/Pattern"}) {
            QPDFObjectHandle category = resources.getKey(key);
            if (!category.isDictionary())
                continue;
            for (auto& [name, resource] : category.getDictAsMap()) {
                if (!names.count(name) || !done.insert(key + name).second)
                    continue;
                const Borrowed& borrowed = borrowedBy(resource, 0);
                if (!borrowed)
                    return false;
                names.insert(borrowed->begin(), borrowed->end());
            }
        }
    }
    return true;
}

const ResourcePruner::Borrowed& ResourcePruner::borrowedBy(QPDFObjectHandle resource, int depth)
{
    if (!resource.isIndirect()) {
        Borrowed borrowed = read(resource, depth);
        m_ofDirect = std::move(borrowed);
        return m_ofDirect;
    }
    const QPDFObjGen og = resource.getObjGen();
    const auto [known, isNew] = m_borrowed.emplace(og, NameSet()); // a resource within itself adds nothing
    if (!isNew)
        return known->second;
    Borrowed borrowed = read(resource, depth);
    return m_borrowed[og] = std::move(borrowed);
}

ResourcePruner::Borrowed ResourcePruner::read(QPDFObjectHandle resource, int depth)
{
    Borrowed names = NameSet();
    if (depth > depthLimit)
        return std::nullopt;
    if (resource.isStream()) {
        QPDFObjectHandle dictionary = resource.getDict();
        const bool draws = dictionary.getKey("/Subtype").isNameAndEquals("/Form")
                           || dictionary.hasKey("/PatternType") || dictionary.hasKey("/BBox");
        if (!draws)
            return names;
        QPDFObjectHandle own = dictionary.getKey("/Resources");
        const bool isRead = own.isDictionary() ? addDeeper(own, names, depth) : addContent(resource, names);
        return isRead ? names : std::nullopt;
    }
    if (!resource.isDictionary())
        return names;
    if (resource.getKey("/Subtype").isNameAndEquals("/Type3"))
        return addGlyphs(resource, names) ? names : std::nullopt;
    if (QPDFObjectHandle mask = resource.getKey("/SMask");
        mask.isDictionary() && mask.getKey("/G").isStream())
        return borrowedBy(mask.getKey("/G"), depth + 1);
    return names;
}

bool ResourcePruner::addContent(QPDFObjectHandle stream, Borrowed& into)
{
    const std::optional<NameSet> names = contentNames(stream);
    if (names)
        into->insert(names->begin(), names->end());
    return names.has_value();
}

bool ResourcePruner::addDeeper(QPDFObjectHandle resources, Borrowed& into, int depth)
{
    for (const char* key : {"/XObject", "/Font", "/ExtGState", "/Pattern"}) {
        QPDFObjectHandle category = resources.getKey(key);
        if (!category.isDictionary())
            continue;
        for (auto& [name, resource] : category.getDictAsMap()) {
            const Borrowed borrowed = borrowedBy(resource, depth + 1);
            if (!borrowed)
                return false;
            into->insert(borrowed->begin(), borrowed->end());
        }
    }
    return true;
}

bool ResourcePruner::addGlyphs(QPDFObjectHandle font, Borrowed& into)
{
    QPDFObjectHandle glyphs = font.getKey("/CharProcs");
    if (font.getKey("/Resources").isDictionary() || !glyphs.isDictionary())
        return true;
    for (auto& [name, glyph] : glyphs.getDictAsMap()) {
        if (glyph.isStream() && !addContent(glyph, into))
            return false;
    }
    return true;
}

} // namespace folvane::pdf
