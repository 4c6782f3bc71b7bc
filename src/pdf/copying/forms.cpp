#include "pdf/copying/forms.h"

#include "pdf/copying/FreeNames.h"
#include "pdf/copying/defaultAppearance.h"
#include "pdf/structure/DocumentData.h"
#include "platform/tasks/Cancelled.h"

#include <algorithm>
#include <set>
#include <utility>

namespace folvane::pdf {

namespace {

bool isSame(QPDFObjectHandle a, QPDFObjectHandle b)
{
    if (a.isIndirect() || b.isIndirect())
        return a.getObjGen() == b.getObjGen();
    return a.unparse() == b.unparse();
}

void renameFonts(QPDFObjectHandle field, const std::map<std::string, std::string>& newFonts)
{
    QPDFObjectHandle appearance = field.getKey("/DA");
    if (!newFonts.empty() && appearance.isString())
        field.replaceKey("/DA", QPDFObjectHandle::newString(
                                    renamedFontsInAppearance(appearance.getStringValue(), newFonts)));
}

/// Widgets that no field lists (a damaged form) are still drawn with what the form says.
bool hasWidgets(const SourcePart::Round& round)
{
    return std::any_of(round.annotations.begin(), round.annotations.end(), [](QPDFObjectHandle annotation) {
        return annotation.getKey("/Subtype").isNameAndEquals("/Widget");
    });
}

/// The dictionary under a key, which is made where there is none.
QPDFObjectHandle dictionaryAt(QPDFObjectHandle parent, const std::string& key)
{
    if (!parent.getKey(key).isDictionary())
        parent.replaceKey(key, QPDFObjectHandle::newDictionary());
    return parent.getKey(key);
}

/// Copies the entries into a dictionary that others have filled. Returns those that needed another name: old to new.
std::map<std::string, std::string> mergeEntries(QPDFObjectHandle into, QPDFObjectHandle entries,
                                                ObjectCopier& copier, FreeNames& freeNames)
{
    std::map<std::string, std::string> renamed;
    const auto isTaken = [&](const std::string& name) { return into.hasKey(name) || entries.hasKey(name); };
    for (auto& [key, value] : entries.getDictAsMap()) {
        QPDFObjectHandle copied = copier.copy(value);
        copier.drain();
        std::string name = key;
        if (into.hasKey(key) && !isSame(into.getKey(key), copied))
            name = renamed[key] = freeNames.next(key, isTaken);
        into.replaceKey(name, copied);
    }
    return renamed;
}

void append(QPDFObjectHandle list, const std::vector<QPDFObjectHandle>& items)
{
    for (const QPDFObjectHandle& item : items)
        list.appendItem(item);
}

struct CopiedFields {
    std::vector<QPDFObjectHandle> all;
    std::vector<QPDFObjectHandle> topLevel;
};

CopiedFields copiedFields(SourcePart& part, SourcePart::Round& round)
{
    const std::vector<FormTree::Node>& nodes = part.source().form().nodes;
    CopiedFields fields;
    for (const size_t i : round.keptFields) {
        QPDFObjectHandle copied = round.copier.copy(nodes[i].field);
        if (copied.isNull())
            continue;
        fields.all.push_back(copied);
        if (nodes[i].parent < 0)
            fields.topLevel.push_back(copied);
    }
    round.copier.drain();
    return fields;
}

/// The fields that are computed from others, in the order in which that is done.
std::vector<QPDFObjectHandle> copiedCalculations(QPDFObjectHandle form, SourcePart::Round& round)
{
    QPDFObjectHandle order = form.getKey("/CO");
    return order.isArray() ? round.copier.copyList(order).getArrayAsVector()
                           : std::vector<QPDFObjectHandle>();
}

class FormMerger {
public:
    void add(SourcePart& part);
    QPDFObjectHandle form();

private:
    using NameMap = std::map<std::string, std::string>;

    void addRound(SourcePart& part, SourcePart::Round& round);
    void renameClashing(const std::vector<QPDFObjectHandle>& topLevel);
    NameMap mergeDefaultResources(SourcePart::Round& round, QPDFObjectHandle resources);
    void takeDefaults(SourcePart::Round& round, QPDFObjectHandle form,
                      const std::vector<QPDFObjectHandle>& topLevel, const NameMap& newFonts);

    QPDFObjectHandle m_form = QPDFObjectHandle::newDictionary();
    QPDFObjectHandle m_fields = QPDFObjectHandle::newArray();
    QPDFObjectHandle m_calculationOrder = QPDFObjectHandle::newArray();
    std::set<std::string> m_names;
    FreeNames m_freeFields;
    FreeNames m_freeResources;
    bool m_isNeeded = false;
};

void FormMerger::add(SourcePart& part)
{
    if (!part.source().catalogue().getKey("/AcroForm").isDictionary())
        return;
    for (SourcePart::Round& round : part.rounds())
        addRound(part, round);
}

void FormMerger::addRound(SourcePart& part, SourcePart::Round& round)
{
    if (round.keptFields.empty() && !hasWidgets(round))
        return;
    QPDFObjectHandle form = part.source().catalogue().getKey("/AcroForm");
    const CopiedFields fields = copiedFields(part, round);
    const NameMap newFonts = mergeDefaultResources(round, form.getKey("/DR"));
    for (const QPDFObjectHandle& field : fields.all)
        renameFonts(field, newFonts);
    takeDefaults(round, form, fields.topLevel, newFonts);
    renameClashing(fields.topLevel);
    append(m_fields, fields.topLevel);
    append(m_calculationOrder, copiedCalculations(form, round));
    round.copier.drain();
}

void FormMerger::renameClashing(const std::vector<QPDFObjectHandle>& topLevel)
{
    std::set<std::string> own;
    for (QPDFObjectHandle field : topLevel) {
        if (QPDFObjectHandle name = field.getKey("/T"); name.isString())
            own.insert(name.getUTF8Value());
    }
    NameMap renamed;
    const auto isTaken = [&](const std::string& name) { return m_names.count(name) || own.count(name); };
    for (const std::string& name : own) {
        if (m_names.count(name))
            renamed[name] = m_freeFields.next(name, isTaken);
    }
    for (QPDFObjectHandle field : topLevel) {
        QPDFObjectHandle name = field.getKey("/T");
        if (!name.isString())
            continue;
        if (const auto found = renamed.find(name.getUTF8Value()); found != renamed.end())
            field.replaceKey("/T", QPDFObjectHandle::newUnicodeString(found->second));
    }
    for (const std::string& name : own)
        m_names.insert(renamed.count(name) ? renamed[name] : name);
}

/// Returns the fonts that had to be renamed: old name to new name.
FormMerger::NameMap FormMerger::mergeDefaultResources(SourcePart::Round& round, QPDFObjectHandle resources)
{
    NameMap newFonts;
    if (!resources.isDictionary())
        return newFonts;
    QPDFObjectHandle merged = dictionaryAt(m_form, "/DR");
    for (auto& [category, entries] : resources.getDictAsMap()) {
        if (entries.isDictionary()) {
            NameMap renamed =
                mergeEntries(dictionaryAt(merged, category), entries, round.copier, m_freeResources);
            if (category == "/Font")
                newFonts = std::move(renamed);
        } else if (!merged.hasKey(category)) {
            merged.replaceKey(category, round.copier.copy(entries));
        }
    }
    return newFonts;
}

/// Values that fields inherit from their form: the first form gives them to the new one, fields of later forms get
/// them written down where they differ.
void FormMerger::takeDefaults(SourcePart::Round& round, QPDFObjectHandle form,
                              const std::vector<QPDFObjectHandle>& topLevel, const NameMap& newFonts)
{
    const bool isFirst = !std::exchange(m_isNeeded, true);
    for (const char* key : {"/DA", "/Q"}) {
        QPDFObjectHandle value = round.copier.copy(form.getKey(key));
        if (value.isNull() && std::string_view(key) == "/Q")
            value = QPDFObjectHandle::newInteger(0); // what no value means must be said beside another form's
        if (isFirst && !value.isNull())
            m_form.replaceKey(key, value);
        if (isFirst || value.isNull() || isSame(value, m_form.getKey(key)))
            continue;
        for (QPDFObjectHandle field : topLevel) {
            if (field.hasKey(key))
                continue;
            field.replaceKey(key, value);
            renameFonts(field, newFonts);
        }
    }
    if (QPDFObjectHandle needed = form.getKey("/NeedAppearances"); needed.isBool() && needed.getBoolValue())
        m_form.replaceKey("/NeedAppearances", QPDFObjectHandle::newBool(true));
}

/// Null when no page has anything of a form.
QPDFObjectHandle FormMerger::form()
{
    if (!m_isNeeded)
        return QPDFObjectHandle::newNull();
    m_form.replaceKey("/Fields", m_fields);
    if (m_calculationOrder.getArrayNItems() > 0)
        m_form.replaceKey("/CO", m_calculationOrder);
    return m_form;
}

} // namespace

QPDFObjectHandle joinedForms(QPDF& target, std::list<SourcePart>& parts, const std::stop_token& stop)
{
    FormMerger merger;
    for (SourcePart& part : parts) {
        throwIfStopped(stop);
        merger.add(part);
    }
    QPDFObjectHandle form = merger.form();
    return form.isNull() ? form : target.makeIndirectObject(form);
}

} // namespace folvane::pdf
