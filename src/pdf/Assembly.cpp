#include "pdf/Assembly.h"

#include "pdf/Document.h"
#include "pdf/DocumentWriter.h"
#include "pdf/copying/FormMerger.h"
#include "pdf/copying/SourcePart.h"
#include "pdf/copying/catalogue.h"
#include "pdf/copying/layers.h"
#include "pdf/copying/namedDestinations.h"
#include "pdf/copying/outlines.h"
#include "pdf/copying/pageLabels.h"
#include "pdf/drawing/PageRasteriser.h"
#include "pdf/images/ImageRecoder.h"
#include "pdf/structure/DocumentData.h"
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

/// The pages by source, for each document that is merged anew, in the order in which these first occur.
std::vector<std::pair<DocumentData*, std::vector<PagePlacement>>>
bySource(const std::vector<PageCopy>& pages, const std::vector<QPDFObjectHandle>& targets)
{
    std::vector<std::pair<DocumentData*, std::vector<PagePlacement>>> groups;
    std::map<std::pair<DocumentData*, int>, size_t> groupOf;
    for (size_t i = 0; i < pages.size(); ++i) {
        DocumentData* source = &pages[i].source->data();
        const auto [group, isNew] =
            groupOf.emplace(std::pair(source, pages[i].mergedDocument), groups.size());
        if (isNew)
            groups.emplace_back(source, std::vector<PagePlacement>());
        groups[group->second].second.push_back({pages[i].index, pages[i].rotation, targets[i]});
    }
    return groups;
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
void setPages(QPDF& target, const std::vector<QPDFObjectHandle>& pages)
{
    QPDFObjectHandle root = target.getRoot().getKey("/Pages");
    for (QPDFObjectHandle page : pages)
        page.replaceKey("/Parent", root);
    root.replaceKey("/Kids", QPDFObjectHandle::newArray(pages));
    root.replaceKey("/Count", QPDFObjectHandle::newInteger(static_cast<long long>(pages.size())));
}

} // namespace

struct Assembly::Target {
    QPDF qpdf;
    PDFVersion version;
    std::vector<QPDFObjectHandle> pages;
    std::list<SourcePart> parts;

    void makeParts(const std::vector<PageCopy>& copies, const std::stop_token& stop);
    void copyPages(const std::stop_token& stop);
    void copyWhatHangsOnThem(const std::vector<PageCopy>& copies, NamedDestinations& names,
                             const std::stop_token& stop);
};

void Assembly::Target::makeParts(const std::vector<PageCopy>& copies, const std::stop_token& stop)
{
    for (size_t i = 0; i < copies.size(); ++i)
        pages.push_back(emptyPage(qpdf));
    const auto groups = bySource(copies, pages);
    const auto company = groups.size() == 1 ? SourcePart::Company::Alone : SourcePart::Company::Merged;
    std::unordered_map<DocumentData*, SourcePart*> originals;
    for (const auto& [source, placements] : groups) {
        throwIfStopped(stop);
        if (const auto original = originals.find(source); original != originals.end()) {
            parts.emplace_back(*original->second, placements);
            continue;
        }
        originals[source] = &parts.emplace_back(qpdf, *source, placements, company);
        version.updateIfGreater(versionOf(*source));
    }
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
    setPages(qpdf, pages);
}

void Assembly::Target::copyWhatHangsOnThem(const std::vector<PageCopy>& copies, NamedDestinations& names,
                                           const std::stop_token& stop)
{
    QPDFObjectHandle root = qpdf.getRoot();
    FormMerger forms(qpdf);
    for (SourcePart& part : parts) {
        throwIfStopped(stop);
        forms.add(part);
    }
    setUnlessNull(root, "/AcroForm", forms.form());
    throwIfStopped(stop);
    names.write(qpdf);
    setUnlessNull(root, "/Outlines", joinedOutlines(qpdf, parts, stop));

    std::vector<LabelledPage> labelled;
    for (const PageCopy& copy : copies)
        labelled.push_back({&copy.source->data(), copy.index});
    setUnlessNull(root, "/PageLabels", joinedPageLabels(labelled, stop));

    throwIfStopped(stop);
    copyOutputIntents(qpdf, parts);
    if (isFromOneSource(parts)) {
        if (parts.front().isWhole())
            copyWholeDocument(qpdf, parts.front());
        copyDescription(qpdf, parts.front());
    }
    setUnlessNull(root, "/OCProperties", joinedLayers(parts)); // last: it looks at which layers were copied
}

Assembly::Assembly(const std::vector<PageCopy>& pages, std::stop_token stop)
    : m_target(std::make_unique<Target>())
{
    m_target->qpdf.emptyPDF();
    m_target->qpdf.setSuppressWarnings(true);
    m_target->makeParts(pages, stop);
    NamedDestinations names(m_target->parts);
    m_target->copyPages(stop);
    m_target->copyWhatHangsOnThem(pages, names, stop);
}

Assembly::~Assembly() = default;

void Assembly::recodeImages(const CompressionStep& step, std::shared_ptr<ImageCache> cache,
                            std::stop_token stop)
{
    ImageRecoder(m_target->qpdf, step, std::move(cache), std::move(stop)).recode();
}

QByteArray Assembly::written(const QString& password, std::stop_token stop)
{
    return writtenDocument(m_target->qpdf, m_target->version, password, stop);
}

std::unique_ptr<PageRasteriser> rasteriserOf(Document& document, const std::stop_token& stop)
{
    DocumentData& data = document.data();
    if (data.readsFileAsItIs) {
        std::unique_ptr<PageRasteriser> direct = PageRasteriser::open(data.file, stop);
        if (direct && direct->pageCount() == document.pageCount())
            return direct;
    }
    if (!data.file && !data.bytes.isEmpty())
        return PageRasteriser::open(data.bytes, stop);
    std::vector<PageCopy> all;
    for (int i = 0; i < document.pageCount(); ++i)
        all.push_back({&document, i, document.rotation(i).value_or(0)});
    try {
        return PageRasteriser::open(Assembly(all, stop).written({}, stop), stop);
    } catch (const std::exception&) {
        return nullptr; // a page that cannot be drawn is a placeholder, not an error
    }
}

} // namespace folvane::pdf
