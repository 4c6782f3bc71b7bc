#include "pdf/images/imageUses.h"

#include <map>
#include <ranges>

namespace folvane::pdf {

namespace {

bool isImage(QPDFObjectHandle object)
{
    return object.isStream() && object.getDict().getKey("/Subtype").isNameAndEquals("/Image");
}

void note(QPDFObjectHandle object, ObjGenSet& objects)
{
    if (object.isStream())
        objects.insert(object.getObjGen());
}

/// How images hang on other objects.
struct References {
    ObjGenSet softMasks;
    ObjGenSet untouchable;

    void add(QPDFObjectHandle dictionary)
    {
        note(dictionary.getKey("/SMask"), softMasks);
        note(dictionary.getKey("/Mask"), untouchable);
        note(dictionary.getKey("/Thumb"), untouchable);
        QPDFObjectHandle colours = dictionary.getKey("/SMask");
        if (colours.isStream() && colours.getDict().hasKey("/Matte"))
            untouchable.insert(colours.getObjGen());
    }
};

double statedPixels(QPDFObjectHandle image)
{
    double pixels = 1;
    for (const char* side : {"/Width", "/Height"}) {
        QPDFObjectHandle value = image.getDict().getKey(side);
        pixels *= value.isInteger() ? static_cast<double>(value.getIntValue()) : 0;
    }
    return pixels;
}

} // namespace

std::vector<ImageUse> imageUses(QPDF& document)
{
    References references;
    std::vector<QPDFObjectHandle> images;
    for (QPDFObjectHandle object : document.getAllObjects()) {
        if (object.isStream() || object.isDictionary())
            references.add(object.isStream() ? object.getDict() : object);
        if (isImage(object))
            images.push_back(object);
    }
    std::map<std::pair<double, QPDFObjGen>, ImageUse> largestFirst;
    for (const QPDFObjectHandle& image : images) {
        if (references.untouchable.count(image.getObjGen()) > 0)
            continue;
        const bool isMask = references.softMasks.count(image.getObjGen()) > 0;
        const auto role = isMask ? StoredImage::Role::SoftMask : StoredImage::Role::Picture;
        largestFirst.insert({{-statedPixels(image), image.getObjGen()}, {image, role}});
    }
    const auto uses = std::views::values(largestFirst);
    return {uses.begin(), uses.end()};
}

} // namespace folvane::pdf
