#include "pdf/images/imageColours.h"

#include "pdf/structure/filterChain.h"

#include <algorithm>

namespace folvane::pdf {

namespace {

using Kind = ImageColours::Kind;

constexpr int maxPaletteBytes = 256 * 4;

ImageColours kept(int channels)
{
    return {Kind::Kept, channels, {}, 0, {}};
}

ImageColours drawn(int channels)
{
    return {Kind::Drawn, channels, {}, 0, {}};
}

ImageColours ofName(const std::string& name)
{
    if (name == "/DeviceGray" || name == "/CalGray" || name == "/Separation")
        return kept(1);
    if (name == "/DeviceRGB" || name == "/CalRGB")
        return kept(3);
    if (name == "/DeviceCMYK")
        return kept(4);
    return name == "/Lab" ? drawn(3) : ImageColours();
}

/// A profile may describe Lab, whose samples do not average like those of the others.
bool isLab(QPDFObjectHandle alternate)
{
    return alternate.isArray() && alternate.getArrayNItems() > 0
           && alternate.getArrayItem(0).isNameAndEquals("/Lab");
}

ImageColours ofProfile(QPDFObjectHandle stream)
{
    QPDFObjectHandle count = stream.isStream() ? stream.getDict().getKey("/N") : QPDFObjectHandle::newNull();
    if (!count.isInteger())
        return {};
    const long long channels = count.getIntValue();
    if (channels != 1 && channels != 3 && channels != 4)
        return {};
    const auto number = static_cast<int>(channels);
    return isLab(stream.getDict().getKey("/Alternate")) ? drawn(number) : kept(number);
}

ImageColours ofInks(QPDFObjectHandle names)
{
    if (!names.isArray() || names.getArrayNItems() < 1 || names.getArrayNItems() > 32)
        return {};
    const int channels = names.getArrayNItems();
    return channels == 1 ? kept(1) : drawn(channels);
}

QByteArray paletteBytes(QPDFObjectHandle lookup)
{
    if (lookup.isString())
        return QByteArray::fromStdString(lookup.getStringValue());
    const std::optional<FilterChain> chain = lookup.isStream() ? filterChain(lookup) : std::nullopt;
    if (!chain || !std::all_of(chain->begin(), chain->end(), isPlain))
        return {};
    const std::optional<QByteArray> stored = storedBytes(lookup, 64 * maxPaletteBytes, {});
    return stored ? unpacked(*stored, *chain, 64 * maxPaletteBytes, {}).value_or(QByteArray()) : QByteArray();
}

bool isIndexed(QPDFObjectHandle space)
{
    return space.isArray() && space.getArrayNItems() > 0 && space.getArrayItem(0).isNameAndEquals("/Indexed");
}

ImageColours ofPalette(const std::vector<QPDFObjectHandle>& parts)
{
    if (parts.size() < 4 || isIndexed(parts[1])) // which may even be its own base
        return {};
    QPDFObjectHandle base = parts[1], last = parts[2];
    QByteArray palette = paletteBytes(parts[3]);
    if (palette.isEmpty() || !last.isInteger() || last.getIntValue() < 0 || last.getIntValue() > 255)
        return {};
    const ImageColours under = imageColours(base);
    if (under.kind != Kind::Kept)
        return under.kind == Kind::Drawn ? drawn(1) : ImageColours();
    const qsizetype wanted = (last.getIntValue() + 1) * under.channels;
    palette.truncate(wanted);
    palette.append(wanted - palette.size(), '\0');
    return {Kind::Indexed, 1, base, under.channels, palette};
}

} // namespace

ImageColours imageColours(QPDFObjectHandle space)
{
    if (space.isName())
        return ofName(space.getName());
    const std::vector<QPDFObjectHandle> parts =
        space.isArray() ? space.getArrayAsVector() : std::vector<QPDFObjectHandle>();
    if (parts.empty() || !QPDFObjectHandle(parts[0]).isName())
        return {};
    const std::string family = QPDFObjectHandle(parts[0]).getName();
    if (family == "/Indexed")
        return ofPalette(parts);
    if (family == "/ICCBased")
        return parts.size() > 1 ? ofProfile(parts[1]) : ImageColours();
    if (family == "/DeviceN")
        return parts.size() > 1 ? ofInks(parts[1]) : ImageColours();
    return ofName(family);
}

} // namespace folvane::pdf
