#include "pdf/images/inlineImages.h"

#include "pdf/structure/filterChain.h"
#include "platform/tasks/Cancelled.h"

#include <algorithm>
#include <set>

namespace folvane::pdf {

namespace {

constexpr size_t leastImageBytes = 4096; // smaller ones are not worth a rewriting
constexpr qint64 contentLimit = 64LL * 1024 * 1024;

bool isSpace(char c)
{
    return c == ' ' || c == '\n' || c == '\r' || c == '\t' || c == '\f' || c == '\0';
}

/// Position behind the next operator of that name, which stands between spaces; npos when there is none.
size_t behindOperator(std::string_view content, std::string_view name, size_t from)
{
    for (size_t at = content.find(name, from); at != std::string_view::npos;
         at = content.find(name, at + 1)) {
        const size_t end = at + name.size();
        if (at > 0 && isSpace(content[at - 1]) && (end == content.size() || isSpace(content[end])))
            return end;
    }
    return std::string_view::npos;
}

/// Whether between the operators that enclose the data of an inline image there is room for a large one.
bool mayHoldLargeImage(std::string_view content)
{
    size_t start = behindOperator(content, "ID", 0);
    while (start != std::string_view::npos) {
        const size_t end = behindOperator(content, "EI", start);
        if (end == std::string_view::npos)
            return false;
        if (end - start >= leastImageBytes)
            return true;
        start = behindOperator(content, "ID", end);
    }
    return false;
}

bool mayHoldLargeImage(QPDFObjectHandle stream, const std::stop_token& stop)
{
    const std::optional<FilterChain> chain = stream.isStream() ? filterChain(stream) : std::nullopt;
    if (!chain || !std::all_of(chain->begin(), chain->end(), isPlain))
        return false;
    const std::optional<QByteArray> stored = storedBytes(stream, contentLimit, stop);
    if (!stored || stored->size() < static_cast<qsizetype>(leastImageBytes))
        return false;
    const std::optional<QByteArray> content = unpacked(*stored, *chain, contentLimit, stop);
    throwIfStopped(stop);
    return content
           && mayHoldLargeImage(std::string_view(content->constData(), static_cast<size_t>(content->size())));
}

std::vector<QPDFObjectHandle> streamsOf(QPDFObjectHandle contents)
{
    return contents.isArray() ? contents.getArrayAsVector() : std::vector<QPDFObjectHandle>{contents};
}

QPDFObjectHandle dictionaryOf(QPDFObjectHandle owner)
{
    return owner.isStream() ? owner.getDict() : owner;
}

std::set<std::string> objectNames(QPDFObjectHandle owner)
{
    QPDFObjectHandle resources = dictionaryOf(owner).getKey("/Resources");
    QPDFObjectHandle objects = resources.isDictionary() ? resources.getKey("/XObject") : resources;
    return objects.isDictionary() ? objects.getKeys() : std::set<std::string>();
}

std::vector<QPDFObjectHandle> pagesOf(QPDF& document)
{
    QPDFObjectHandle kids = document.getRoot().getKey("/Pages").getKey("/Kids");
    return kids.isArray() ? kids.getArrayAsVector() : std::vector<QPDFObjectHandle>();
}

/// A form without resources draws with those of the page, where a new object's name may mean another.
bool isFormWithResources(QPDFObjectHandle object)
{
    return object.isStream() && object.getDict().getKey("/Subtype").isNameAndEquals("/Form")
           && object.getDict().getKey("/Resources").isDictionary();
}

/// Content of several pages would be rewritten for each of them, and its images multiplied.
ObjGenSet sharedContents(const std::vector<QPDFObjectHandle>& pages)
{
    ObjGenSet seen, shared;
    for (QPDFObjectHandle page : pages) {
        for (QPDFObjectHandle stream : streamsOf(page.getKey("/Contents"))) {
            if (!seen.insert(stream.getObjGen()).second)
                shared.insert(stream.getObjGen());
        }
    }
    return shared;
}

} // namespace

InlineImages::InlineImages(QPDF& document, const std::stop_token& stop)
{
    const std::vector<QPDFObjectHandle> pages = pagesOf(document);
    const ObjGenSet shared = sharedContents(pages);
    for (QPDFObjectHandle page : pages) {
        throwIfStopped(stop);
        const std::vector<QPDFObjectHandle> streams = streamsOf(page.getKey("/Contents"));
        const auto isShared = [&](const QPDFObjectHandle& part) {
            return shared.count(part.getObjGen()) > 0;
        };
        const auto holdsOne = [&](const QPDFObjectHandle& part) { return mayHoldLargeImage(part, stop); };
        const auto isHuge = [](QPDFObjectHandle part) {
            return part.isStream() && hasHugeRows(part.getDict());
        };
        if (std::none_of(streams.begin(), streams.end(), isShared)
            && std::none_of(streams.begin(), streams.end(), isHuge)
            && std::any_of(streams.begin(), streams.end(), holdsOne))
            rewrite(page, page.getKey("/Contents"));
    }
    for (const QPDFObjectHandle& object : document.getAllObjects()) {
        throwIfStopped(stop);
        if (isFormWithResources(object) && mayHoldLargeImage(object, stop))
            rewrite(object, QPDFObjectHandle::newNull());
    }
}

void InlineImages::rewrite(QPDFObjectHandle owner, QPDFObjectHandle contents)
{
    try {
        Rewritten content{owner, contents, nullptr, {}};
        if (owner.isStream())
            content.data = owner.getStreamData(qpdf_dl_specialized);
        const std::set<std::string> before = objectNames(owner);
        QPDFPageObjectHelper(owner).externalizeInlineImages(leastImageBytes, true);
        const std::set<std::string> after = objectNames(owner);
        std::set_difference(after.begin(), after.end(), before.begin(), before.end(),
                            std::back_inserter(content.names));
        if (!content.names.empty())
            m_rewritten.push_back(std::move(content));
    } catch (const std::exception&) {
        return; // content that the library cannot read
    }
}

void InlineImages::restoreUnless(const ObjGenSet& recoded)
{
    for (const Rewritten& content : m_rewritten) {
        if (!hasOneOf(content, recoded))
            restore(content);
    }
}

bool InlineImages::hasOneOf(const Rewritten& content, const ObjGenSet& objects)
{
    QPDFObjectHandle images = dictionaryOf(content.owner).getKey("/Resources").getKey("/XObject");
    return std::any_of(content.names.begin(), content.names.end(), [&](const std::string& name) {
        return objects.count(images.getKey(name).getObjGen()) > 0;
    });
}

void InlineImages::restore(const Rewritten& content)
{
    QPDFObjectHandle owner = content.owner;
    QPDFObjectHandle resources = dictionaryOf(owner).getKey("/Resources");
    QPDFObjectHandle images = resources.getKey("/XObject");
    for (const std::string& name : content.names)
        images.removeKey(name);
    if (images.getKeys().empty())
        resources.removeKey("/XObject");
    if (owner.isStream())
        owner.replaceStreamData(content.data, QPDFObjectHandle::newNull(), QPDFObjectHandle::newNull());
    else
        owner.replaceKey("/Contents", content.contents);
}

} // namespace folvane::pdf
