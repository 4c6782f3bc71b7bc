#include "pdf/structure/Destinations.h"

#include "pdf/structure/DocumentData.h"
#include "pdf/structure/treeEntries.h"

namespace folvane::pdf {

DestinationTable DestinationTable::read(QPDFObjectHandle catalogue)
{
    DestinationTable table;
    if (QPDFObjectHandle names = catalogue.getKey("/Names"); names.isDictionary()) {
        for (auto& [key, destination] : treeEntries(names.getKey("/Dests"), "/Names")) {
            if (key.isString())
                table.byString.emplace(key.getStringValue(), destination);
        }
    }
    if (QPDFObjectHandle dests = catalogue.getKey("/Dests"); dests.isDictionary())
        table.byName = dests.getDictAsMap();
    return table;
}

QPDFObjectHandle DestinationTable::find(QPDFObjectHandle name) const
{
    const auto& names = name.isName() ? byName : byString;
    const auto found = names.find(name.isName() ? name.getName() : name.getStringValue());
    return found == names.end() ? QPDFObjectHandle::newNull() : found->second;
}

int destinationPage(DocumentData& source, QPDFObjectHandle destination)
{
    if (destination.isName() || destination.isString())
        destination = source.destinations().find(destination);
    if (destination.isDictionary())
        destination = destination.getKey("/D");
    if (!destination.isArray() || destination.getArrayNItems() < 1)
        return -1;
    QPDFObjectHandle page = destination.getArrayItem(0);
    if (page.isIndirect())
        return source.pageNumber(page.getObjGen());
    // A number is meant for other files, but readers follow it within the file, too.
    if (!page.isInteger() || page.getIntValue() < 0
        || page.getIntValue() >= static_cast<long long>(source.pages.size()))
        return -1;
    return static_cast<int>(page.getIntValue());
}

} // namespace folvane::pdf
