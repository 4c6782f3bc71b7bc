#include "pdf/copying/TravelRules.h"

#include "pdf/copying/ObjectCopier.h"
#include "pdf/structure/Destinations.h"
#include "pdf/structure/DocumentData.h"

namespace folvane::pdf {

namespace {

bool isGoTo(QPDFObjectHandle dictionary)
{
    return dictionary.getKey("/S").isNameAndEquals("/GoTo") && dictionary.hasKey("/D");
}

/// Nodes of the page tree and the catalogue lead to every page; a page outside the tree is no page of ours.
bool leadsToWholeDocument(QPDFObjectHandle dictionary)
{
    QPDFObjectHandle type = dictionary.getKey("/Type");
    if (!type.isName())
        return false;
    const std::string name = type.getName();
    return name == "/Pages" || name == "/Catalog" || name == "/Page";
}

QPDFObjectHandle find(const CopyRules::Entries& entries, const char* key)
{
    const auto found = entries.find(key);
    return found == entries.end() ? QPDFObjectHandle::newNull() : found->second;
}

bool holdsSignature(const CopyRules::Entries& field, QPDFObjectHandle value)
{
    return (value.isDictionary() && value.hasKey("/ByteRange")) || find(field, "/FT").isNameAndEquals("/Sig");
}

} // namespace

TravelRules::TravelRules(DocumentData& source, const ObjectCopier& copier, Structure structure,
                         Resources resources, Company company)
    : m_source(source), m_copier(copier), m_structure(structure), m_resources(resources), m_company(company)
{
}

bool TravelRules::leavesOut(QPDFObjectHandle dictionary) const
{
    return leadsToWholeDocument(dictionary) || (isGoTo(dictionary) && isGone(dictionary.getKey("/D")));
}

void TravelRules::rewrite(Entries& entries, QPDFObjectHandle dictionaryOrStream) const
{
    if (entries.erase("/PieceInfo") > 0)
        entries.erase("/LastModified");
    if (m_structure == Structure::Dropped) {
        entries.erase("/StructParent");
        entries.erase("/StructParents");
    }
    if (dictionaryOrStream.isStream())
        rewriteStream(entries, dictionaryOrStream);
    else
        rewriteDictionary(entries);
}

QPDFObjectHandle TravelRules::resourcesFor(QPDFObjectHandle resources, QPDFObjectHandle contents,
                                           const std::vector<QPDFObjectHandle>& annotations) const
{
    return m_resources == Resources::Pruned ? m_pruner.pruned(resources, contents, annotations) : resources;
}

void TravelRules::rewriteStream(Entries& entries, QPDFObjectHandle stream) const
{
    if (const auto resources = entries.find("/Resources"); resources != entries.end())
        resources->second = resourcesFor(resources->second, stream);
}

void TravelRules::rewriteDictionary(Entries& entries) const
{
    if (const auto value = entries.find("/V");
        value != entries.end() && holdsSignature(entries, value->second))
        entries.erase(value);
    if (const auto destination = entries.find("/Dest"); destination != entries.end()) {
        if (isGone(destination->second))
            entries.erase(destination);
        else
            destination->second = rewrittenDestination(destination->second);
    }
    if (m_source.attachmentsAreLocked)
        entries.erase("/EF"); // nobody could read it without the encryption
    const auto target = entries.find("/D");
    if (target != entries.end() && find(entries, "/S").isNameAndEquals("/GoTo")) {
        target->second = rewrittenDestination(target->second);
        if (m_structure == Structure::Dropped)
            entries.erase("/SD");
    }
}

bool TravelRules::isGone(QPDFObjectHandle destination) const
{
    const int page = destinationPage(m_source, destination);
    return page >= 0 && m_copier.isBuried(m_source.pages[static_cast<size_t>(page)].getObjGen());
}

QPDFObjectHandle TravelRules::destinationOf(QPDFObjectHandle annotationOrBookmark)
{
    if (QPDFObjectHandle direct = annotationOrBookmark.getKey("/Dest"); !direct.isNull())
        return direct;
    QPDFObjectHandle action = annotationOrBookmark.getKey("/A");
    return action.isDictionary() && isGoTo(action) ? action.getKey("/D") : QPDFObjectHandle::newNull();
}

QPDFObjectHandle TravelRules::rewrittenDestination(QPDFObjectHandle destination) const
{
    if (destination.isString() || destination.isName())
        return rewrittenName(destination);
    if (destination.isDictionary() && destination.getKey("/D").isArray()) {
        QPDFObjectHandle rewritten = destination.shallowCopy();
        rewritten.replaceKey("/D", rewrittenDestination(destination.getKey("/D")));
        return rewritten;
    }
    if (!destination.isArray() || destination.getArrayNItems() < 1
        || !destination.getArrayItem(0).isInteger())
        return destination;
    // Page numbers change in the new document: the page itself is followed. A number without a page stays without.
    const int page = destinationPage(m_source, destination);
    QPDFObjectHandle explicitly = destination.shallowCopy();
    explicitly.setArrayItem(0, page < 0 ? QPDFObjectHandle::newNull()
                                        : m_source.pages[static_cast<size_t>(page)]);
    return explicitly;
}

QPDFObjectHandle TravelRules::rewrittenName(QPDFObjectHandle name) const
{
    // A name that leads nowhere in its own document must not come to life in another's.
    if (m_company == Company::Merged && m_source.destinations().find(name).isNull())
        return QPDFObjectHandle::newNull();
    const auto& newNames = name.isName() ? m_newNames : m_newStrings;
    const auto renamed = newNames.find(name.isName() ? name.getName() : name.getStringValue());
    if (renamed == newNames.end())
        return name;
    return name.isName() ? QPDFObjectHandle::newName(renamed->second)
                         : QPDFObjectHandle::newString(renamed->second);
}

} // namespace folvane::pdf
