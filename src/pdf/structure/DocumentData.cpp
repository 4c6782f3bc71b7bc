#include "pdf/structure/DocumentData.h"

#include "pdf/structure/pageTree.h"

namespace folvane::pdf {

const DestinationTable& DocumentData::destinations()
{
    if (!destinationTable)
        destinationTable = DestinationTable::read(catalogue());
    return *destinationTable;
}

const FormTree& DocumentData::form()
{
    if (!formTree)
        formTree = FormTree::read(catalogue());
    return *formTree;
}

int DocumentData::pageNumber(const QPDFObjGen& object) const
{
    const auto found = pageNumbers.find(object);
    return found == pageNumbers.end() ? -1 : found->second;
}

std::unique_ptr<DocumentData> documentData(std::shared_ptr<QPDF> qpdf)
{
    auto data = std::make_unique<DocumentData>();
    data->pages = pagesOf(*qpdf);
    data->qpdf = std::move(qpdf);
    for (size_t i = 0; i < data->pages.size(); ++i)
        data->pageNumbers.emplace(data->pages[i].getObjGen(), static_cast<int>(i));
    return data;
}

} // namespace folvane::pdf
