#include "pdf/copying/SourcePart.h"

#include "pdf/copying/layers.h"
#include "pdf/structure/DocumentData.h"
#include "pdf/structure/pageAttributes.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <string_view>

namespace folvane::pdf {

namespace {

/// Entries of a page that do not travel, or that are set on their own.
bool staysBehind(std::string_view key)
{
    constexpr std::array<std::string_view, 18> behind{
        "/Type",      "/Parent",  "/Annots", "/Resources",
        "/MediaBox",  "/CropBox", "/Rotate", "/B",
        "/Thumb",     "/AA",      "/ID",     "/PieceInfo",
        "/PresSteps", "/DPart",   "/PZ",     "/TemplateInstantiated",
        "/Kids",      "/Count"}; // a page with kids would be taken for a node of the page tree
    return std::find(behind.begin(), behind.end(), key) != behind.end();
}

/// The objects among them that others can refer to.
ObjGenSet idsOf(const std::vector<QPDFObjectHandle>& objects)
{
    ObjGenSet ids;
    for (const QPDFObjectHandle& object : objects) {
        if (object.isIndirect())
            ids.insert(object.getObjGen());
    }
    return ids;
}

/// What parts of one source have in common: data (contents, pictures, fonts) and layers, which lead to no page. All
/// else may hold a page, a field or the name of a destination, and each part has its own of these.
ObjectCopier::Shares dataOf(DocumentData& source)
{
    return [layers = idsOf(layersOf(source))](QPDFObjectHandle object) {
        return object.isStream() || object.isDictionaryOfType("/Font")
               || object.isDictionaryOfType("/Encoding") || layers.count(object.getObjGen()) > 0;
    };
}

} // namespace

SourcePart::SourcePart(QPDF& target, DocumentData& source, const std::vector<PagePlacement>& pages,
                       Company company)
    : SourcePart(ObjectCopier(target), source, pages, company, true)
{
}

SourcePart::SourcePart(SourcePart& original, const std::vector<PagePlacement>& pages)
    : SourcePart(ObjectCopier(original.copier(), dataOf(original.source())), original.source(), pages,
                 Company::Merged, false)
{
}

SourcePart::SourcePart(ObjectCopier pagesCopier, DocumentData& source,
                       const std::vector<PagePlacement>& pages, Company company, bool isOriginal)
    : m_source(source), m_isOriginal(isOriginal)
{
    m_rounds.emplace_back(std::move(pagesCopier));
    sortIntoRounds(pages);
    placePages();
    shareBetweenRounds();
    setRules(company);
    buryWhatStaysBehind();
}

void SourcePart::sortIntoRounds(const std::vector<PagePlacement>& pages)
{
    std::vector<size_t> occurrences(m_source.pages.size());
    for (const PagePlacement& page : pages) {
        const auto number = static_cast<size_t>(page.sourcePage);
        Round& round = roundFor(occurrences[number]++);
        round.pages.push_back(page);
        for (QPDFObjectHandle& annotation : annotationsOf(m_source.pages[number]))
            round.annotations.push_back(std::move(annotation));
    }
}

SourcePart::Round& SourcePart::roundFor(size_t repetition)
{
    while (m_rounds.size() <= repetition)
        m_rounds.emplace_back(ObjectCopier(copier().target()));
    return *std::next(m_rounds.begin(), static_cast<std::ptrdiff_t>(repetition));
}

void SourcePart::placePages()
{
    for (const PagePlacement& page : m_rounds.front().pages)
        copier().place(m_source.pages[static_cast<size_t>(page.sourcePage)].getObjGen(), page.target);
}

/// The later rounds leave to the first one all that is not their own.
void SourcePart::shareBetweenRounds()
{
    for (auto round = std::next(m_rounds.begin()); round != m_rounds.end(); ++round) {
        ObjGenSet own = idsOf(round->annotations);
        for (const FormTree::Node& node : m_source.form().nodes)
            own.insert(node.field.getObjGen());
        round->copier = ObjectCopier(copier(), [own = std::move(own)](const QPDFObjectHandle& object) {
            return !own.count(object.getObjGen());
        });
    }
}

void SourcePart::setRules(Company company)
{
    const bool isWhole = company == Company::Alone && isComplete() && m_rounds.size() == 1;
    m_rules.emplace(
        m_source, copier(), isWhole ? TravelRules::Structure::Carried : TravelRules::Structure::Dropped,
        isComplete() ? TravelRules::Resources::AsTheyAre : TravelRules::Resources::Pruned, company);
    for (Round& round : m_rounds)
        round.copier.setRules(*m_rules);
}

/// Pages first: a link is dead where its page is buried.
void SourcePart::buryWhatStaysBehind()
{
    buryLeftOutPages();
    for (Round& round : m_rounds) {
        buryDeadLinks(round);
        buryLeftOutFields(round);
    }
}

bool SourcePart::isComplete() const
{
    return m_rounds.front().pages.size() == m_source.pages.size();
}

void SourcePart::buryLeftOutPages()
{
    if (isComplete())
        return;
    const ObjGenSet onKeptPages = idsOf(m_rounds.front().annotations);
    for (const QPDFObjectHandle& page : m_source.pages) {
        if (!copier().find(page.getObjGen()).isNull())
            continue;
        copier().bury(page.getObjGen());
        for (const QPDFObjGen& annotation : idsOf(annotationsOf(page))) {
            if (!onKeptPages.count(annotation))
                copier().bury(annotation);
        }
    }
}

bool SourcePart::isDeadLink(QPDFObjectHandle annotation) const
{
    if (isComplete() || !annotation.getKey("/Subtype").isNameAndEquals("/Link"))
        return false;
    QPDFObjectHandle destination = TravelRules::destinationOf(annotation);
    return !destination.isNull() && m_rules->isGone(destination);
}

void SourcePart::buryDeadLinks(Round& round)
{
    for (const QPDFObjectHandle& annotation : round.annotations) {
        if (annotation.isIndirect() && isDeadLink(annotation))
            round.copier.bury(annotation.getObjGen());
    }
}

/// A field stays when one of its widgets stands on a page of the round. One that stands on no page at all (a hidden
/// value) stays with a complete copy.
void SourcePart::buryLeftOutFields(Round& round)
{
    const std::vector<FormTree::Node>& nodes = m_source.form().nodes;
    const bool keepsAll = isComplete() && &round == &m_rounds.front();
    if (keepsAll) {
        round.keptFields.resize(nodes.size());
        std::iota(round.keptFields.begin(), round.keptFields.end(), size_t{0});
        return;
    }
    const ObjGenSet onRound = idsOf(round.annotations);
    std::vector<bool> kept(nodes.size());
    for (size_t i = nodes.size(); i-- > 0;) { // children stand behind their parents
        const QPDFObjGen og = nodes[i].field.getObjGen();
        kept[i] = kept[i] || onRound.count(og) > 0;
        if (kept[i] && nodes[i].parent >= 0)
            kept[static_cast<size_t>(nodes[i].parent)] = true;
    }
    for (size_t i = 0; i < nodes.size(); ++i) {
        if (kept[i])
            round.keptFields.push_back(i);
        else
            round.copier.bury(nodes[i].field.getObjGen());
    }
}

void SourcePart::copyPage(Round& round, const PagePlacement& placement)
{
    QPDFObjectHandle page = m_source.pages[static_cast<size_t>(placement.sourcePage)];
    QPDFObjectHandle target = placement.target;
    ObjectCopier& copier = round.copier;
    for (auto& [key, value] : page.getDictAsMap()) {
        if (staysBehind(key) || (key == "/StructParents" && !isWhole()))
            continue;
        if (QPDFObjectHandle copied = copier.copy(value); !copied.isNull())
            target.replaceKey(key, copied);
    }
    for (const char* box : {"/MediaBox", "/CropBox"}) {
        if (QPDFObjectHandle value = page.getKey(box); !value.isNull())
            target.replaceKey(box, copier.copy(value));
    }
    if (placement.rotation != 0)
        target.replaceKey("/Rotate", QPDFObjectHandle::newInteger(placement.rotation));
    target.replaceKey("/Resources", copiedResources(round, page));
    if (QPDFObjectHandle annotations = copiedAnnotations(round, page, target);
        annotations.getArrayNItems() > 0)
        target.replaceKey("/Annots", annotations);
}

QPDFObjectHandle SourcePart::copiedResources(Round& round, QPDFObjectHandle page)
{
    QPDFObjectHandle resources = page.getKey("/Resources");
    if (!resources.isDictionary())
        return QPDFObjectHandle::newDictionary();
    return round.copier.copy(m_rules->resourcesFor(resources, page.getKey("/Contents"), annotationsOf(page)));
}

QPDFObjectHandle SourcePart::copiedAnnotations(Round& round, QPDFObjectHandle page, QPDFObjectHandle target)
{
    QPDFObjectHandle list = QPDFObjectHandle::newArray();
    for (const QPDFObjectHandle& annotation : annotationsOf(page)) {
        if (isDeadLink(annotation))
            continue;
        QPDFObjectHandle copied = round.copier.copy(annotation);
        if (copied.isNull())
            continue;
        round.copier.drain();
        if (copied.isDictionary() && copied.hasKey("/P"))
            copied.replaceKey("/P", target);
        list.appendItem(copied.isIndirect() ? copied : target.getOwningQPDF()->makeIndirectObject(copied));
    }
    return list;
}

} // namespace folvane::pdf
