#pragma once

#include "pdf/structure/qpdfInclude.h"

#include <stop_token>
#include <vector>

namespace folvane::pdf {

/// The larger images that stand in the content of pages and forms themselves, made objects, as which they can be worked
/// on like others.
class InlineImages {
public:
    /// Throws Cancelled. Content that cannot be read, and content that several pages share, stays as it is.
    InlineImages(QPDF& document, const std::stop_token& stop);

    /// Takes back what was changed in content none of whose images is among `recoded`: it would only have grown.
    void restoreUnless(const ObjGenSet& recoded);

private:
    /// A page or form whose content was rewritten.
    struct Rewritten {
        QPDFObjectHandle owner;
        QPDFObjectHandle contents;      ///< of a page, as they were
        std::shared_ptr<Buffer> data;   ///< of a form, decoded, as it was
        std::vector<std::string> names; ///< of the new objects, in its resources
    };

    void rewrite(QPDFObjectHandle owner, QPDFObjectHandle contents);
    static void restore(const Rewritten& content);
    static bool hasOneOf(const Rewritten& content, const ObjGenSet& objects);

    std::vector<Rewritten> m_rewritten;
};

} // namespace folvane::pdf
