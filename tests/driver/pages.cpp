#include "pages.h"

namespace folvane::driver {

QUuid pageAt(const OpenFile& file, int position)
{
    const std::vector<PageItem>& pages = file.pages.value();
    if (position < 1 || size_t(position) > pages.size())
        throw BadRequest(QStringLiteral("there is no page %1").arg(position));
    return pages[size_t(position) - 1].id;
}

QUuid page(const Request& request, const char* field, const OpenFile& file)
{
    return pageAt(file, request.integer(field));
}

std::optional<QUuid> optionalPage(const Request& request, const char* field, const OpenFile& file)
{
    return request.has(field) ? std::optional(page(request, field, file)) : std::nullopt;
}

std::optional<QSet<QUuid>> optionalPages(const Request& request, const OpenFile& file)
{
    const auto positions = request.optionalIntegers("pages");
    if (!positions)
        return std::nullopt;
    QSet<QUuid> ids;
    for (const int position : *positions)
        ids.insert(pageAt(file, position));
    return ids;
}

} // namespace folvane::driver
