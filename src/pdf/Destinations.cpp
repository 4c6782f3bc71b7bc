#include "pdf/Destinations.h"

#include "pdf/DocumentData.h"

namespace folvane::pdf {

namespace {

void readNameTree(QPDFObjectHandle root, std::map<std::string, QPDFObjectHandle>& names)
{
    ObjGenSet seen;
    std::vector<QPDFObjectHandle> waiting{root};
    while (!waiting.empty()) {
        QPDFObjectHandle node = waiting.back();
        waiting.pop_back();
        if (!node.isDictionary() || (node.isIndirect() && !seen.insert(node.getObjGen()).second))
            continue;
        if (QPDFObjectHandle kids = node.getKey("/Kids"); kids.isArray()) {
            for (QPDFObjectHandle kid : kids.getArrayAsVector())
                waiting.push_back(kid);
        }
        if (QPDFObjectHandle pairs = node.getKey("/Names"); pairs.isArray()) {
            const std::vector<QPDFObjectHandle> items = pairs.getArrayAsVector();
            for (size_t i = 0; i + 1 < items.size(); i += 2) {
                if (QPDFObjectHandle key = items[i]; key.isString())
                    names.emplace(key.getStringValue(), items[i + 1]);
            }
        }
    }
}

} // namespace

DestinationTable DestinationTable::read(QPDFObjectHandle catalogue)
{
    DestinationTable table;
    if (QPDFObjectHandle names = catalogue.getKey("/Names"); names.isDictionary())
        readNameTree(names.getKey("/Dests"), table.byString);
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
