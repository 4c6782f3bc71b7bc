#include "pdf/images/readStoredImage.h"

#include "pdf/images/drawnImage.h"
#include "pdf/images/imageColours.h"
#include "pdf/images/jpxHeader.h"
#include "pictures/jpegSamples.h"

#include <algorithm>
#include <cmath>

namespace folvane::pdf {

namespace {

using Kind = ImageColours::Kind;

// Pixels of icons are looked at one by one: coding them with loss is seen at once, and saves next to nothing.
constexpr int iconPixels = 32; // of the long side
// What is drawn is copied into a document of its own.
constexpr qint64 maxDrawnBytes = qint64(64) << 20;

int wholeNumber(QPDFObjectHandle value, int otherwise)
{
    if (!value.isInteger())
        return otherwise;
    return static_cast<int>(std::clamp<long long>(value.getIntValue(), 0, 1 << 30));
}

bool isTrue(QPDFObjectHandle value)
{
    return value.isBool() && value.getBoolValue();
}

std::optional<QSize> sizeIn(QPDFObjectHandle dictionary)
{
    const QSize size(wholeNumber(dictionary.getKey("/Width"), 0),
                     wholeNumber(dictionary.getKey("/Height"), 0));
    return !size.isEmpty() && pixelCount(size) <= maxImagePixels ? std::optional(size) : std::nullopt;
}

/// From, to: pairs for each channel. Empty when there is none.
std::vector<double> decodeArray(QPDFObjectHandle dictionary)
{
    std::vector<double> numbers;
    QPDFObjectHandle array = dictionary.getKey("/Decode");
    for (QPDFObjectHandle number :
         array.isArray() ? array.getArrayAsVector() : std::vector<QPDFObjectHandle>())
        numbers.push_back(number.isNumber() ? number.getNumericValue() : 0);
    return numbers;
}

bool startsInverted(QPDFObjectHandle dictionary)
{
    const std::vector<double> decode = decodeArray(dictionary);
    return decode.size() >= 2 && decode[0] > decode[1];
}

/// The colour of each possible sample, with the Decode array worked in.
QByteArray paletteBySample(const ImageColours& colours, int bits, const std::vector<double>& decode)
{
    const int samples = 1 << bits;
    const auto channels = static_cast<qsizetype>(colours.baseChannels);
    const auto last = static_cast<double>(colours.palette.size() / channels - 1);
    const double from = decode.size() >= 2 ? decode[0] : 0;
    const double to = decode.size() >= 2 ? decode[1] : samples - 1;
    QByteArray palette;
    for (int i = 0; i < samples; ++i) {
        const double index = std::round(from + i * (to - from) / (samples - 1));
        palette +=
            colours.palette.mid(static_cast<qsizetype>(std::clamp(index, 0.0, last)) * channels, channels);
    }
    return palette;
}

std::optional<int> colourTransform(QPDFObjectHandle dictionary)
{
    QPDFObjectHandle parameters = dictionary.getKey("/DecodeParms");
    if (parameters.isArray())
        parameters = parameters.getArrayNItems() > 0
                         ? parameters.getArrayItem(parameters.getArrayNItems() - 1)
                         : QPDFObjectHandle::newNull();
    QPDFObjectHandle value = parameters.isDictionary() ? parameters.getKey("/ColorTransform") : parameters;
    return value.isInteger() ? std::optional(wholeNumber(value, 0)) : std::nullopt;
}

/// The writer decodes what it can decode without loss, except what is plainly deflated already, and chains that expand.
bool willBePackedAnew(const FilterChain& chain)
{
    const auto isAscii = [](const FilterStage& stage) { return stage.name.rfind("/ASCII", 0) == 0; };
    const auto isRuns = [](const FilterStage& stage) { return stage.name == "/RunLengthDecode"; };
    const auto expanding = std::count_if(chain.begin(), chain.end(), std::not_fn(isAscii));
    const bool isDeflated = chain.size() == 1 && chain[0].name == "/FlateDecode";
    return std::all_of(chain.begin(), chain.end(), isPlain)
           && std::none_of(chain.begin(), chain.end(), isRuns) && expanding <= 1 && !isDeflated;
}

/// How the samples of a stream are got at, by its last filter; nothing when in no way.
std::optional<StoredImage::Road> roadOf(const FilterChain& chain)
{
    const auto packing = std::find_if_not(chain.begin(), chain.end(), isPlain);
    if (packing == chain.end())
        return StoredImage::Road::Samples;
    if (std::next(packing) != chain.end())
        return std::nullopt;
    return packing->name == "/DCTDecode" ? StoredImage::Road::Jpeg : StoredImage::Road::Drawn;
}

qint64 mostBytes(StoredImage::Road road)
{
    return road == StoredImage::Road::Drawn ? maxDrawnBytes : maxStoredBytes;
}

/// One image on its way out of the document.
class Reader {
public:
    Reader(QPDFObjectHandle stream, StoredImage::Role role, const std::stop_token& stop)
        : m_stream(stream), m_dictionary(stream.getDict()), m_stop(stop)
    {
        m_read.image.role = role;
    }

    std::optional<ReadImage> read(const ImageColours& colours);

private:
    bool readPacking();
    bool readColours(const ImageColours& colours);
    bool readPalette(const ImageColours& colours);
    bool readJpxHeader();
    qint64 drawingMemory() const;
    bool makeDocument(const ImageColours& colours);

    QPDFObjectHandle m_stream;
    QPDFObjectHandle m_dictionary;
    const std::stop_token& m_stop;
    ReadImage m_read;
    FilterChain m_chain;
    std::optional<JpxHeader> m_jpx;
};

std::optional<ReadImage> Reader::read(const ImageColours& colours)
{
    const std::optional<QSize> size = sizeIn(m_dictionary);
    if (!size)
        return std::nullopt;
    m_read.image.size = *size;
    if (!readPacking() || !readColours(colours))
        return std::nullopt;
    if (m_read.image.road == StoredImage::Road::Drawn && !makeDocument(colours))
        return std::nullopt;
    return std::move(m_read);
}

bool Reader::readPacking()
{
    StoredImage& image = m_read.image;
    const std::optional<FilterChain> chain = filterChain(m_stream);
    const std::optional<StoredImage::Road> road = chain ? roadOf(*chain) : std::nullopt;
    std::optional<QByteArray> bytes = road ? storedBytes(m_stream, mostBytes(*road), m_stop) : std::nullopt;
    if (!bytes)
        return false;
    m_chain = *chain;
    image.road = *road;
    image.bytes = *bytes;
    image.isPackedAnew = willBePackedAnew(m_chain);
    image.colourTransform = colourTransform(m_dictionary);
    std::copy_if(m_chain.begin(), m_chain.end(), std::back_inserter(image.filters), isPlain);
    if (!m_chain.empty() && m_chain.back().name == "/JPXDecode")
        return readJpxHeader();
    image.bits =
        wholeNumber(m_dictionary.getKey("/BitsPerComponent"), image.road == StoredImage::Road::Drawn ? 1 : 8);
    const int bits = image.bits;
    return bits == 1 || bits == 2 || bits == 4 || bits == 8 || bits == 16;
}

/// Its own header decides what decoding it takes.
bool Reader::readJpxHeader()
{
    const std::optional<QByteArray> plain =
        unpacked(m_read.image.bytes, m_read.image.filters, maxDrawnBytes, m_stop);
    m_jpx = plain ? jpxHeader(*plain) : std::nullopt;
    return m_jpx && m_jpx->size == m_read.image.size;
}

bool Reader::readColours(const ImageColours& colours)
{
    StoredImage& image = m_read.image;
    image.channels = colours.channels;
    const bool mustBeDrawn = image.road == StoredImage::Road::Drawn || colours.kind == Kind::Drawn;
    switch (colours.kind) {
    case Kind::Kept: return true;
    case Kind::Indexed: return mustBeDrawn || readPalette(colours);
    case Kind::Drawn: image.road = StoredImage::Road::Drawn; return true;
    case Kind::Unknown: break;
    }
    return m_jpx && m_dictionary.getKey("/ColorSpace").isNull();
}

bool Reader::readPalette(const ImageColours& colours)
{
    StoredImage& image = m_read.image;
    if (image.road == StoredImage::Road::Jpeg || image.bits > 8)
        return false;
    image.palette = paletteBySample(colours, image.bits, decodeArray(m_dictionary));
    image.paletteChannels = colours.baseChannels;
    m_read.space = SpaceAfter::Base;
    m_read.base = colours.base;
    return true;
}

/// Where only the coding is foreign and the samples are grey or three of a kind, the space can stay.
bool Reader::makeDocument(const ImageColours& colours)
{
    StoredImage& image = m_read.image;
    const bool asItStands = colours.kind == Kind::Kept && colours.channels != 4
                            && (!m_jpx || (m_jpx->components == colours.channels && !m_jpx->hasPalette));
    image.drawnChannels = asItStands ? colours.channels : 0;
    m_read.space = asItStands ? SpaceAfter::AsBefore : SpaceAfter::Device;
    const char* space = !asItStands ? nullptr : colours.channels == 1 ? "/DeviceGray" : "/DeviceRGB";
    image.drawingMemory = drawingMemory();
    if (image.bytes.size() > maxDrawnBytes || image.drawingMemory > maxStoredBytes)
        return false;
    image.document = documentOfImage(m_stream, image.size, space, image.bytes, m_stop);
    return true;
}

/// Poppler makes numbers of 32 bits of the samples of JPEG 2000, keeps the coefficients of a JPEG in several scans, and has
/// pages of dots twice at most; all else it reads row by row.
qint64 Reader::drawingMemory() const
{
    const StoredImage& image = m_read.image;
    const std::string packing = m_chain.empty() ? std::string() : m_chain.back().name;
    if (m_jpx)
        return pixelCount(image.size) * m_jpx->components * qint64(sizeof(int32_t));
    const qint64 rows = qint64(image.size.width()) * 64;
    if (packing != "/DCTDecode")
        return rows + pixelCount(image.size) / 4;
    JpegStream jpeg(image.bytes, image.colourTransform);
    const bool isKnown = image.filters.empty() && jpeg.shape();
    return rows + (isKnown ? jpeg.coefficientMemory().value_or(0) : pixelCount(image.size) * 8);
}

bool isColourKey(QPDFObjectHandle mask)
{
    return mask.isArray();
}

bool hasMatte(QPDFObjectHandle softMask)
{
    return softMask.isStream() && softMask.getDict().hasKey("/Matte");
}

/// What says which pixels are seen. Where it cannot be read the picture is treated as if all were.
void readOpacity(QPDFObjectHandle dictionary, StoredImage& image, const std::stop_token& stop)
{
    QPDFObjectHandle soft = dictionary.getKey("/SMask"), stencil = dictionary.getKey("/Mask");
    QPDFObjectHandle mask = soft.isStream() ? soft : stencil;
    if (!mask.isStream())
        return;
    const ImageColours grey{Kind::Kept, 1, {}, 0, {}};
    std::optional<ReadImage> read = Reader(mask, StoredImage::Role::SoftMask, stop).read(grey);
    if (!read)
        return;
    if (!soft.isStream() && read->image.road == StoredImage::Road::Samples)
        read->image.bits = 1; // stencils need not say so
    image.opacityIsInverted = startsInverted(mask.getDict()) == soft.isStream();
    image.opacity = std::make_shared<StoredImage>(std::move(read->image));
}

bool isIcon(QPDFObjectHandle dictionary)
{
    return wholeNumber(dictionary.getKey("/Width"), 0) <= iconPixels
           && wholeNumber(dictionary.getKey("/Height"), 0) <= iconPixels;
}

bool mustStay(QPDFObjectHandle dictionary, StoredImage::Role role)
{
    if (isIcon(dictionary))
        return true;
    if (isTrue(dictionary.getKey("/ImageMask")) || isColourKey(dictionary.getKey("/Mask")))
        return true;
    if (wholeNumber(dictionary.getKey("/SMaskInData"), 0) != 0 || hasMatte(dictionary.getKey("/SMask")))
        return true;
    return role == StoredImage::Role::SoftMask && dictionary.hasKey("/Matte");
}

} // namespace

std::optional<ReadImage> readStoredImage(QPDFObjectHandle stream, StoredImage::Role role,
                                         const std::stop_token& stop)
{
    QPDFObjectHandle dictionary = stream.getDict();
    if (mustStay(dictionary, role))
        return std::nullopt;
    const ImageColours colours = imageColours(dictionary.getKey("/ColorSpace"));
    if (role == StoredImage::Role::SoftMask && (colours.kind != Kind::Kept || colours.channels != 1))
        return std::nullopt;
    std::optional<ReadImage> read = Reader(stream, role, stop).read(colours);
    if (read && role == StoredImage::Role::Picture)
        readOpacity(dictionary, read->image, stop);
    return read;
}

} // namespace folvane::pdf
