#include "pdf/Assembly.h"

#include "pdf/Document.h"
#include "pdf/DocumentWriter.h"
#include "pdf/copying/SourcePart.h"
#include "pdf/copying/catalogue.h"
#include "pdf/copying/forms.h"
#include "pdf/copying/layers.h"
#include "pdf/copying/namedDestinations.h"
#include "pdf/copying/outlines.h"
#include "pdf/copying/pageLabels.h"
#include "pdf/images/ImageRecoder.h"
#include "pdf/stamping/stampPages.h"
#include "pdf/structure/DocumentData.h"
#include "pdf/structure/emptyDocument.h"
#include "platform/tasks/Cancelled.h"

#include <algorithm>
#include <cstdio>
#include <functional>
#include <map>

namespace folvane::pdf {

namespace {

void setUnlessNull(QPDFObjectHandle dictionary, const char* key, QPDFObjectHandle value)
{
    if (!value.isNull())
        dictionary.replaceKey(key, value);
}

QPDFObjectHandle emptyPage(QPDF& target)
{
    QPDFObjectHandle page = QPDFObjectHandle::newDictionary();
    page.replaceKey("/Type", QPDFObjectHandle::newName("/Page"));
    return target.makeIndirectObject(page);
}

/// A page of the new document and where it comes from.
struct TakenPage {
    DocumentData* source;
    int mergedDocument;
    PagePlacement placement;
};

/// What a new document takes of one source.
struct PageGroup {
    DocumentData* source;
    std::vector<PagePlacement> pages;
};

/// One group for each source of each document that is merged anew, in the order in which these first occur.
std::vector<PageGroup> bySource(const std::vector<TakenPage>& pages)
{
    std::vector<PageGroup> groups;
    std::map<std::pair<DocumentData*, int>, size_t> groupOf;
    for (const TakenPage& page : pages) {
        const auto [group, isNew] =
            groupOf.emplace(std::pair(page.source, page.mergedDocument), groups.size());
        if (isNew)
            groups.push_back({page.source, {}});
        groups[group->second].pages.push_back(page.placement);
    }
    return groups;
}

std::list<SourcePart> partsOf(QPDF& target, const std::vector<PageGroup>& groups, const std::stop_token& stop)
{
    const auto company = groups.size() == 1 ? SourcePart::Company::Alone : SourcePart::Company::Merged;
    std::list<SourcePart> parts;
    std::unordered_map<DocumentData*, SourcePart*> originals;
    for (const auto& [source, pages] : groups) {
        throwIfStopped(stop);
        if (const auto original = originals.find(source); original != originals.end())
            parts.emplace_back(*original->second, pages);
        else
            originals[source] = &parts.emplace_back(target, *source, pages, company);
    }
    return parts;
}

bool isFromOneSource(const std::list<SourcePart>& parts)
{
    return std::count_if(parts.begin(), parts.end(), std::mem_fn(&SourcePart::isOriginal)) == 1;
}

/// What the header says, unless the catalogue raises it (ISO 32000-2, 7.5.2). A header beyond reason counts as 1.7.
PDFVersion versionOf(DocumentData& source)
{
    try {
        PDFVersion version = source.qpdf->getVersionAsPDFVersion();
        QPDFObjectHandle raised = source.catalogue().getKey("/Version");
        int major = 0;
        int minor = 0;
        if (raised.isName() && std::sscanf(raised.getName().c_str(), "/%1d.%1d", &major, &minor) == 2)
            version.updateIfGreater(PDFVersion(major, minor));
        return version;
    } catch (const std::exception&) {
        return PDFVersion(1, 7);
    }
}

/// A flat page tree: the library would keep its own books of each page that is added through it.
void setPages(QPDF& target, const std::vector<TakenPage>& pages)
{
    QPDFObjectHandle root = target.getRoot().getKey("/Pages");
    std::vector<QPDFObjectHandle> kids;
    for (const TakenPage& page : pages) {
        kids.push_back(page.placement.target);
        kids.back().replaceKey("/Parent", root);
    }
    root.replaceKey("/Kids", QPDFObjectHandle::newArray(kids));
    root.replaceKey("/Count", QPDFObjectHandle::newInteger(static_cast<long long>(kids.size())));
}

std::vector<LabelledPage> labelled(const std::vector<TakenPage>& pages)
{
    std::vector<LabelledPage> labelled;
    for (const TakenPage& page : pages)
        labelled.push_back({page.source, page.placement.sourcePage});
    return labelled;
}

} // namespace

/// Once it exists, all is decided that copying goes by (what stays behind, which names change), and nothing is copied yet.
struct Assembly::Target {
    Target(const std::vector<PageCopy>& copies, const std::stop_token& stop)
        : pages(taken(*qpdf, copies)),
          stamped(stampedPages(copies)),
          parts(partsOf(*qpdf, bySource(pages), stop)),
          names(parts)
    {
    }

    static std::vector<TakenPage> taken(QPDF& target, const std::vector<PageCopy>& copies);
    std::vector<StampedPage> stampedPages(const std::vector<PageCopy>& copies) const;
    void copyPages(const std::stop_token& stop);
    void copyWhatHangsOnThem(const std::stop_token& stop);
    PDFVersion version() const;

    const std::shared_ptr<QPDF> qpdf = emptyDocument();
    const std::vector<TakenPage> pages;
    const std::vector<StampedPage> stamped;
    std::list<SourcePart> parts;
    NamedDestinations names;
};

std::vector<TakenPage> Assembly::Target::taken(QPDF& target, const std::vector<PageCopy>& copies)
{
    std::vector<TakenPage> pages;
    for (const PageCopy& copy : copies)
        pages.push_back(
            {&copy.source->data(), copy.mergedDocument, {copy.index, copy.rotation, emptyPage(target)}});
    return pages;
}

std::vector<StampedPage> Assembly::Target::stampedPages(const std::vector<PageCopy>& copies) const
{
    std::vector<StampedPage> found;
    for (size_t i = 0; i < copies.size(); ++i) {
        const std::optional<PageGeometry> geometry =
            copies[i].stamps.empty() ? std::nullopt : copies[i].source->geometry(copies[i].index);
        if (geometry)
            found.push_back(
                {pages[i].placement.target, {geometry->cropBox, copies[i].rotation}, copies[i].stamps});
    }
    return found;
}

void Assembly::Target::copyPages(const std::stop_token& stop)
{
    for (SourcePart& part : parts) {
        for (SourcePart::Round& round : part.rounds()) {
            for (const PagePlacement& page : round.pages) {
                throwIfStopped(stop);
                part.copyPage(round, page);
                round.copier.drain();
            }
        }
    }
    setPages(*qpdf, pages);
}

void Assembly::Target::copyWhatHangsOnThem(const std::stop_token& stop)
{
    QPDFObjectHandle root = qpdf->getRoot();
    setUnlessNull(root, "/AcroForm", joinedForms(*qpdf, parts, stop));
    throwIfStopped(stop);
    names.write(*qpdf);
    setUnlessNull(root, "/Outlines", joinedOutlines(*qpdf, parts, stop));
    setUnlessNull(root, "/PageLabels", joinedPageLabels(labelled(pages), stop));
    throwIfStopped(stop);
    copyOutputIntents(*qpdf, parts);
    if (isFromOneSource(parts)) {
        if (parts.front().isWhole())
            copyWholeDocument(*qpdf, parts.front());
        copyDescription(*qpdf, parts.front());
    }
    setUnlessNull(root, "/OCProperties", joinedLayers(parts)); // last: it looks at which layers were copied
}

PDFVersion Assembly::Target::version() const
{
    PDFVersion version;
    for (const SourcePart& part : parts)
        version.updateIfGreater(versionOf(part.source()));
    return version;
}

Assembly::Assembly(const std::vector<PageCopy>& pages, std::stop_token stop)
    : m_target(std::make_unique<Target>(pages, stop))
{
    m_target->copyPages(stop);
    m_target->copyWhatHangsOnThem(stop);
}

Assembly::~Assembly() = default;

void Assembly::recodeImages(const CompressionStep& step, std::shared_ptr<ImageCache> cache,
                            std::stop_token stop)
{
    ImageRecoder(*m_target->qpdf, step, std::move(cache), std::move(stop)).recode();
}

void Assembly::stamp(const QHash<QUuid, QUrl>& files, const std::optional<CompressionStep>& quality,
                     CompactStamps& pictures, const std::stop_token& stop)
{
    stampPages(*m_target->qpdf, m_target->stamped, files, quality, pictures, stop);
}

QByteArray Assembly::written(const QString& password, std::stop_token stop)
{
    return writtenDocument(*m_target->qpdf, m_target->version(), password, stop);
}

} // namespace folvane::pdf
