#pragma once

#include "pdf/structure/Destinations.h"
#include "pdf/structure/FormTree.h"
#include "pdf/structure/qpdfInclude.h"
#include "platform/files/SourceFile.h"

#include <QByteArray>

#include <memory>
#include <optional>
#include <vector>

namespace folvane::pdf {

/// What stands behind a Document: the parsed file and what was learnt about it.
struct DocumentData {
    std::shared_ptr<const SourceFile> file; ///< null for a document made in memory
    QByteArray bytes;                       ///< what `qpdf` reads when it does not read the file itself
    std::shared_ptr<QPDF> qpdf;
    std::vector<QPDFObjectHandle> pages;
    ObjGenMap<int> pageNumbers;        ///< zero-based, by page object
    bool attachmentsAreLocked = false; ///< the one thing for which the password is missing
    bool readsFileAsItIs = false; ///< not encrypted, repaired or made: other readers see the same in the file

    std::optional<DestinationTable> destinationTable; ///< read at the first build
    std::optional<FormTree> formTree;                 ///< read at the first build

    QPDFObjectHandle catalogue() { return qpdf->getRoot(); }
    const DestinationTable& destinations();
    const FormTree& form();
    /// The page that an object stands for, or -1.
    int pageNumber(const QPDFObjGen& object) const;
};

/// Reads the list of pages, which may be empty; throws what qpdf throws.
std::unique_ptr<DocumentData> documentData(std::shared_ptr<QPDF> qpdf);

} // namespace folvane::pdf
