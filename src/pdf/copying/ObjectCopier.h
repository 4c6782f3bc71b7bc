#pragma once

#include "pdf/copying/CopyRules.h"
#include "pdf/structure/qpdfInclude.h"

#include <functional>
#include <vector>

namespace folvane::pdf {

/// Copies objects of one document into another with all that they refer to, each once. Unlike the library's own copy
/// it knows which objects must not travel: what is buried (a left-out page, say) becomes null wherever it is referred
/// to, so nothing behind it is reached. Stream data stays in the source and is read when the target is written.
class ObjectCopier {
public:
    using Shares = std::function<bool(QPDFObjectHandle object)>;

    explicit ObjectCopier(QPDF& target) : m_target(&target) {}
    /// A copier for what is taken once more: objects of which `shares` is true are copied once, by `base`, with all
    /// that they refer to; the others are copied anew. `base` must stay where it is.
    ObjectCopier(ObjectCopier& base, Shares shares);

    /// The rules must outlive the copying.
    void setRules(const CopyRules& rules) { m_rules = &rules; }

    void bury(const QPDFObjGen& object);
    bool isBuried(const QPDFObjGen& object) const;
    /// References to `object` will lead to `copy`, which the caller fills.
    void place(const QPDFObjGen& object, QPDFObjectHandle copy);
    /// The object's copy if this copier has been asked for it; null otherwise.
    QPDFObjectHandle find(const QPDFObjGen& object) const;

    /// The value for use in the target. Objects that it refers to are copied by the next `drain`.
    QPDFObjectHandle copy(QPDFObjectHandle value);
    /// An array, nested ones too, without the entries that do not travel.
    QPDFObjectHandle copyList(QPDFObjectHandle array);
    /// Copies what is still waiting.
    void drain();

    QPDF& target() { return *m_target; }

private:
    struct Waiting {
        QPDFObjectHandle source;
        QPDFObjectHandle copy;
    };

    bool leavesOut(QPDFObjectHandle dictionary) const { return m_rules && m_rules->leavesOut(dictionary); }
    QPDFObjectHandle copyIndirect(QPDFObjectHandle object);
    QPDFObjectHandle newCopy(QPDFObjectHandle object);
    QPDFObjectHandle copyDirect(QPDFObjectHandle value);
    QPDFObjectHandle copyArray(QPDFObjectHandle array);
    QPDFObjectHandle copyEntries(QPDFObjectHandle dictionary, QPDFObjectHandle dictionaryOrStream);
    void fillStream(QPDFObjectHandle source, QPDFObjectHandle copy);

    QPDF* m_target;
    ObjectCopier* m_base = nullptr;
    Shares m_shares;
    const CopyRules* m_rules = nullptr;
    ObjGenMap<QPDFObjectHandle> m_copies; ///< null for what is buried
    std::vector<Waiting> m_waiting;
};

} // namespace folvane::pdf
