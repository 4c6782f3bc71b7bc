#include "pdf/structure/emptyDocument.h"

namespace folvane::pdf {

std::shared_ptr<QPDF> emptyDocument()
{
    std::shared_ptr<QPDF> document = QPDF::create();
    document->emptyPDF();
    document->setSuppressWarnings(true);
    return document;
}

} // namespace folvane::pdf
