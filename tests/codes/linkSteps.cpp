#include "codes/links/LinkCheck.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <iostream>
#include <string>

// For linkReference.py: a line {"url", "rawText"} is answered with what is found out about the link, beside what the platform's URL
// tells of it; {"name"} with the encoded form of a host's name.

namespace {

using namespace folvane;

QJsonArray told(const QList<LinkWarning>& warnings)
{
    QJsonArray told;
    for (const LinkWarning& warning : warnings)
        told.append(QJsonArray{int(warning.kind), warning.name});
    return told;
}

QJsonObject told(const QUrl& url, const LinkCheck& check)
{
    return {{"parsedHost", url.host(QUrl::FullyEncoded)},
            {"scheme", url.scheme()},
            {"user", url.userName(QUrl::FullyDecoded)},
            {"absolute", url.toString(QUrl::FullyEncoded)},
            {"displayAddress", check.displayAddress},
            {"host", check.host},
            {"realSite", check.realSite},
            {"warnings", told(check.warnings)}};
}

QJsonObject answer(const QJsonObject& request)
{
    if (request.contains("name"))
        return {{"encoded", QString::fromLatin1(QUrl::toAce(request["name"].toString()))}};
    const QUrl url(request["url"].toString());
    return told(url, checkLink(url, request["rawText"].toString()));
}

} // namespace

int main()
{
    for (std::string line; std::getline(std::cin, line);) {
        const QJsonObject request = QJsonDocument::fromJson(QByteArray::fromStdString(line)).object();
        std::cout << QJsonDocument(answer(request)).toJson(QJsonDocument::Compact).constData() << std::endl;
    }
    return 0;
}
