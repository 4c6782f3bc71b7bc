#include "pdf/resourcePruning.h"

#include "pdf/contentNames.h"

#include <array>

namespace folvane::pdf {

namespace {

constexpr std::array categories{"/XObject", "/Font",    "/ExtGState", "/ColorSpace",
                                "/Pattern", "/Shading", "/Properties"};

/// Colour spaces that stand in for device colours without being named by any operator.
bool isNeededUnnamed(const std::string& key)
{
    return key == "/DefaultGray" || key == "/DefaultRGB" || key == "/DefaultCMYK";
}

/// The glyphs of a Type 3 font without resources of its own draw with those of the page.
bool hasBorrowingFont(QPDFObjectHandle resources)
{
    QPDFObjectHandle fonts = resources.getKey("/Font");
    if (!fonts.isDictionary())
        return false;
    for (auto& [key, font] : fonts.getDictAsMap()) {
        if (font.isDictionary() && font.getKey("/Subtype").isNameAndEquals("/Type3")
            && !font.hasKey("/Resources"))
            return true;
    }
    return false;
}

/// Adds the names in forms that have no resources of their own and so draw with those of the page.
bool addNamesOfBorrowingForms(QPDFObjectHandle resources, NameSet& names)
{
    QPDFObjectHandle objects = resources.getKey("/XObject");
    if (!objects.isDictionary())
        return true;
    ObjGenSet seen;
    bool grew = true;
    while (grew) {
        grew = false;
        for (auto& [key, object] : objects.getDictAsMap()) {
            if (!names.count(key) || !object.isStream() || !seen.insert(object.getObjGen()).second)
                continue;
            QPDFObjectHandle dictionary = object.getDict();
            if (!dictionary.getKey("/Subtype").isNameAndEquals("/Form")
                || dictionary.getKey("/Resources").isDictionary())
                continue;
            std::optional<NameSet> inner = contentNames(object);
            if (!inner)
                return false;
            names.merge(*inner);
            grew = true;
        }
    }
    return true;
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

} // namespace

QPDFObjectHandle prunedResources(QPDFObjectHandle resources, QPDFObjectHandle contents)
{
    if (!resources.isDictionary() || hasBorrowingFont(resources))
        return resources;
    std::optional<NameSet> names = contentNames(contents);
    if (!names || !addNamesOfBorrowingForms(resources, *names))
        return resources;

    std::map<std::string, QPDFObjectHandle> pruned = resources.getDictAsMap();
    bool changed = false;
    for (const char* key : categories) {
        const auto category = pruned.find(key);
        if (category == pruned.end() || !category->second.isDictionary())
            continue;
        QPDFObjectHandle kept = prunedCategory(category->second, *names);
        changed = changed || !kept.isSameObjectAs(category->second);
        category->second = kept;
    }
    return changed ? QPDFObjectHandle::newDictionary(pruned) : resources;
}

} // namespace folvane::pdf
