#include "codes/contentJson.h"
#include "verbs.h"

// What codes mean.

namespace folvane::driver {

namespace {

void tellContent(Call& call)
{
    const auto symbology = symbologyOf(call.request.get<QString>("symbology", QStringLiteral("qr")));
    if (!symbology)
        throw BadRequest(QStringLiteral("there is no such symbology"));
    const CodeContent content = codeContent(call.request.get<QString>("payload"), *symbology);
    const QJsonObject told = contentJson(content);
    call.tell("kind", told["kind"]);
    call.tell("fields", told["fields"]);
    call.tell("title", kindTitle(content));
}

} // namespace

Verbs codeVerbs()
{
    return {{"content", atOnce(tellContent)}};
}

} // namespace folvane::driver
