#include "pdf/copying/ObjectCopier.h"

#include "pdf/structure/filterChain.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace folvane::pdf {

namespace {

/// Arrays whose entries stand for themselves, so that an entry which does not travel leaves no gap.
bool isListOfMembers(std::string_view key)
{
    constexpr std::array<std::string_view, 6> lists{"/Kids", "/Fields", "/Annots", "/OCGs", "/CO", "/Next"};
    return std::find(lists.begin(), lists.end(), key) != lists.end();
}

/// The data comes decrypted from the source, so the name of a crypt filter must not stay behind.
void dropCryptFilter(QPDFObjectHandle dictionary)
{
    QPDFObjectHandle filter = dictionary.getKey("/Filter");
    if (filter.isNameAndEquals("/Crypt")) {
        dictionary.removeKey("/Filter");
        dictionary.removeKey("/DecodeParms");
    }
    if (!filter.isArray())
        return;
    QPDFObjectHandle parameters = dictionary.getKey("/DecodeParms");
    for (int i = filter.getArrayNItems() - 1; i >= 0; --i) {
        if (!filter.getArrayItem(i).isNameAndEquals("/Crypt"))
            continue;
        filter.eraseItem(i);
        if (parameters.isArray() && i < parameters.getArrayNItems())
            parameters.eraseItem(i);
    }
}

/// Two filters that expand, one upon the other, or huge rows can make gigabytes out of a kilobyte.
bool mayExplode(QPDFObjectHandle dictionary)
{
    if (hasHugeRows(dictionary))
        return true;
    QPDFObjectHandle filters = dictionary.getKey("/Filter");
    if (!filters.isArray())
        return false;
    int expanding = 0;
    for (QPDFObjectHandle filter : filters.getArrayAsVector()) {
        for (const char* name : {"/FlateDecode", "/Fl", "/LZWDecode", "/LZW", "/RunLengthDecode", "/RL"})
            expanding += filter.isNameAndEquals(name);
    }
    return expanding > 1;
}

} // namespace

ObjectCopier::ObjectCopier(ObjectCopier& base, Shares shares)
    : m_target(base.m_target), m_base(&base), m_shares(std::move(shares)), m_rules(base.m_rules)
{
}

void ObjectCopier::bury(const QPDFObjGen& object)
{
    place(object, QPDFObjectHandle::newNull());
}

bool ObjectCopier::isBuried(const QPDFObjGen& object) const
{
    const auto found = m_copies.find(object);
    return found != m_copies.end() && QPDFObjectHandle(found->second).isNull();
}

void ObjectCopier::place(const QPDFObjGen& object, QPDFObjectHandle copy)
{
    m_copies[object] = copy;
}

QPDFObjectHandle ObjectCopier::find(const QPDFObjGen& object) const
{
    const auto found = m_copies.find(object);
    return found == m_copies.end() ? QPDFObjectHandle::newNull() : found->second;
}

QPDFObjectHandle ObjectCopier::copy(QPDFObjectHandle value)
{
    return value.isIndirect() ? copyIndirect(value) : copyDirect(value);
}

QPDFObjectHandle ObjectCopier::copyIndirect(QPDFObjectHandle object)
{
    const QPDFObjGen og = object.getObjGen();
    if (const auto found = m_copies.find(og); found != m_copies.end())
        return found->second;
    const bool isShared = m_base && m_shares(object);
    return m_copies.emplace(og, isShared ? m_base->copyIndirect(object) : newCopy(object)).first->second;
}

/// Null for what does not travel.
QPDFObjectHandle ObjectCopier::newCopy(QPDFObjectHandle object)
{
    if (object.isNull() || (object.isDictionary() && leavesOut(object)))
        return QPDFObjectHandle::newNull();
    QPDFObjectHandle copy =
        object.isStream() ? m_target->newStream() : QPDFObjectHandle::newReserved(m_target);
    m_waiting.push_back({object, copy});
    return copy;
}

QPDFObjectHandle ObjectCopier::copyDirect(QPDFObjectHandle value)
{
    if (value.isArray())
        return copyArray(value);
    if (!value.isDictionary())
        return value.shallowCopy();
    return leavesOut(value) ? QPDFObjectHandle::newNull() : copyEntries(value, value);
}

QPDFObjectHandle ObjectCopier::copyArray(QPDFObjectHandle array)
{
    std::vector<QPDFObjectHandle> items = array.getArrayAsVector();
    for (QPDFObjectHandle& item : items)
        item = copy(item);
    return QPDFObjectHandle::newArray(items);
}

QPDFObjectHandle ObjectCopier::copyList(QPDFObjectHandle array)
{
    std::vector<QPDFObjectHandle> items;
    for (QPDFObjectHandle item : array.getArrayAsVector()) {
        QPDFObjectHandle copied = item.isArray() && !item.isIndirect() ? copyList(item) : copy(item);
        if (!copied.isNull())
            items.push_back(copied);
    }
    return QPDFObjectHandle::newArray(items);
}

QPDFObjectHandle ObjectCopier::copyEntries(QPDFObjectHandle dictionary, QPDFObjectHandle dictionaryOrStream)
{
    CopyRules::Entries entries = dictionary.getDictAsMap();
    if (m_rules)
        m_rules->rewrite(entries, dictionaryOrStream);
    for (auto entry = entries.begin(); entry != entries.end();) {
        QPDFObjectHandle& value = entry->second;
        value = isListOfMembers(entry->first) && value.isArray() ? copyList(value) : copy(value);
        entry = value.isNull() ? entries.erase(entry) : std::next(entry);
    }
    return QPDFObjectHandle::newDictionary(entries);
}

void ObjectCopier::drain()
{
    if (m_base)
        m_base->drain();
    while (!m_waiting.empty()) {
        Waiting next = m_waiting.back();
        m_waiting.pop_back();
        if (next.source.isStream())
            fillStream(next.source, next.copy);
        else if (next.source.isDictionary())
            m_target->replaceObject(next.copy.getObjGen(), copyEntries(next.source, next.source));
        else
            m_target->replaceObject(next.copy.getObjGen(), copyDirect(next.source));
    }
    if (m_base)
        m_base->drain();
}

void ObjectCopier::fillStream(QPDFObjectHandle source, QPDFObjectHandle copy)
{
    QPDFObjectHandle dictionary = copyEntries(source.getDict(), source);
    dictionary.removeKey("/Length"); // an indirect length would go astray
    dropCryptFilter(dictionary);
    copy.replaceDict(dictionary);
    copy.setFilterOnWrite(!mayExplode(dictionary)); // the writer would decode it
    copy.replaceStreamData(
        [source](Pipeline* pipeline, bool suppressWarnings, bool willRetry) mutable {
            return source.pipeStreamData(pipeline, nullptr, 0, qpdf_dl_none, suppressWarnings, willRetry);
        },
        QPDFObjectHandle(), QPDFObjectHandle());
}

} // namespace folvane::pdf
