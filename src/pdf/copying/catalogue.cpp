#include "pdf/copying/catalogue.h"

#include "pdf/structure/DocumentData.h"

#include <set>
#include <string_view>

namespace folvane::pdf {

namespace {

std::string textOf(QPDFObjectHandle value)
{
    if (value.isString())
        return value.getUTF8Value();
    return value.isName() ? value.getName() : std::string();
}

bool belongsToAttachments(std::string_view key)
{
    return key == "/AF" || key == "/Collection";
}

void copyAttachments(QPDF& target, SourcePart& part)
{
    QPDFObjectHandle files = part.source().catalogue().getKey("/Names");
    if (!files.isDictionary() || !files.hasKey("/EmbeddedFiles"))
        return;
    QPDFObjectHandle names = target.getRoot().getKey("/Names");
    if (!names.isDictionary())
        names = QPDFObjectHandle::newDictionary();
    names.replaceKey("/EmbeddedFiles", part.copier().copy(files.getKey("/EmbeddedFiles")));
    target.getRoot().replaceKey("/Names", names);
}

} // namespace

void copyOutputIntents(QPDF& target, std::list<SourcePart>& parts)
{
    QPDFObjectHandle joined = QPDFObjectHandle::newArray();
    std::set<std::string> seen;
    for (SourcePart& part : parts) {
        QPDFObjectHandle intents = part.source().catalogue().getKey("/OutputIntents");
        if (!intents.isArray())
            continue;
        for (QPDFObjectHandle intent : intents.getArrayAsVector()) {
            if (!intent.isDictionary())
                continue;
            const std::string identity =
                textOf(intent.getKey("/S")) + '\n' + textOf(intent.getKey("/OutputConditionIdentifier"));
            QPDFObjectHandle copied = part.copier().copy(intent);
            if (!copied.isNull() && seen.insert(identity).second)
                joined.appendItem(copied);
        }
        part.copier().drain();
    }
    if (joined.getArrayNItems() > 0)
        target.getRoot().replaceKey("/OutputIntents", joined);
}

void copyWholeDocument(QPDF& target, SourcePart& part)
{
    QPDFObjectHandle source = part.source().catalogue();
    const bool hasAttachments = !part.source().attachmentsAreLocked;
    for (const char* key : {"/StructTreeRoot", "/MarkInfo", "/Lang", "/AF", "/Collection",
                            "/ViewerPreferences", "/PageLayout", "/PageMode"}) {
        if (!hasAttachments && belongsToAttachments(key))
            continue;
        QPDFObjectHandle copied = part.copier().copy(source.getKey(key));
        if (!copied.isNull())
            target.getRoot().replaceKey(key, copied);
    }
    if (hasAttachments)
        copyAttachments(target, part);
    part.copier().drain();
}

void copyDescription(QPDF& target, SourcePart& part)
{
    QPDFObjectHandle source = part.source().qpdf->getTrailer().getKey("/Info");
    if (!source.isDictionary())
        return;
    QPDFObjectHandle info = QPDFObjectHandle::newDictionary();
    for (const char* key : {"/Title", "/Author", "/Subject", "/Keywords"}) {
        if (QPDFObjectHandle value = source.getKey(key); value.isString())
            info.replaceKey(key, part.copier().copy(value));
    }
    part.copier().drain();
    if (!info.getKeys().empty())
        target.getTrailer().replaceKey("/Info", target.makeIndirectObject(info));
}

} // namespace folvane::pdf
