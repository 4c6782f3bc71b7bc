// Prints what leads to the pages of a document, a line each, pages counted from 1:
// "link 1>2", "bookmark One@1" (indented by its level), "field name@1=value".
var file = new Document(scriptArgs[0]);

function pageOf(uri)
{
    var page = /^#page=(\d+)/.exec(uri || "");
    return page ? page[1] : "?";
}

function printBookmarks(items, indent)
{
    for (var i = 0; items && i < items.length; ++i) {
        print("bookmark", indent + items[i].title + "@" + pageOf(items[i].uri));
        printBookmarks(items[i].down, indent + " ");
    }
}

for (var number = 1; number <= file.countPages(); ++number) {
    var page = file.loadPage(number - 1);
    page.getLinks().forEach(function (link) { print("link", number + ">" + pageOf(link.uri)); });
    page.getWidgets().forEach(function (field) {
        print("field", field.getLabel() + "@" + number + "=" + field.getValue());
    });
}
printBookmarks(file.loadOutline(), "");
