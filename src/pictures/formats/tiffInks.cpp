#include "pictures/formats/tiffInks.h"

#include "pictures/formats/pictureLimits.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <memory>
#include <vector>

#include <tiffio.h>

namespace folvane {

namespace {

constexpr int inks = 4;

struct CloseTiff {
    void operator()(TIFF* tiff) const { TIFFClose(tiff); }
};
using TiffPtr = std::unique_ptr<TIFF, CloseTiff>;

/// A file in memory, as libtiff reads it.
struct Memory {
    const QByteArray& bytes;
    qint64 at = 0;
};

tmsize_t readMemory(thandle_t handle, void* to, tmsize_t n)
{
    auto& memory = *static_cast<Memory*>(handle);
    const qint64 got = std::clamp<qint64>(memory.bytes.size() - memory.at, 0, n);
    std::memcpy(to, memory.bytes.constData() + memory.at, size_t(got));
    memory.at += got;
    return got;
}

tmsize_t writeNothing(thandle_t, void*, tmsize_t)
{
    return -1;
}

toff_t seekMemory(thandle_t handle, toff_t offset, int from)
{
    auto& memory = *static_cast<Memory*>(handle);
    const qint64 base = from == SEEK_CUR ? memory.at : from == SEEK_END ? memory.bytes.size() : 0;
    memory.at = std::clamp<qint64>(base + qint64(offset), 0, memory.bytes.size());
    return toff_t(memory.at);
}

int closeMemory(thandle_t)
{
    return 0;
}

toff_t sizeOfMemory(thandle_t handle)
{
    return toff_t(static_cast<Memory*>(handle)->bytes.size());
}

TiffPtr openTiff(Memory& memory)
{
    return TiffPtr(TIFFClientOpen("picture", "rm", &memory, readMemory, writeNothing, seekMemory, closeMemory,
                                  sizeOfMemory, nullptr, nullptr)); // "m": not mapped
}

template <typename Number>
Number field(TIFF* tiff, ttag_t tag)
{
    Number value = 0;
    TIFFGetFieldDefaulted(tiff, tag, &value);
    return value;
}

/// How the samples lie in the file.
struct InkLayout {
    quint32 width, height;
    quint32 blockWidth, blockHeight; ///< of a tile; a strip is a tile as wide as the picture
    int samples;                     ///< a pixel, the inks first
    int bytesPerSample;
    bool separate; ///< each ink has blocks of its own
    bool tiled;

    int samplesPerBlockPixel() const { return separate ? 1 : samples; }
    qint64 blockBytes() const { return blockRowBytes() * blockHeight; }
    qint64 blockRowBytes() const { return qint64(blockWidth) * samplesPerBlockPixel() * bytesPerSample; }
};

std::optional<InkLayout> layoutOf(TIFF* tiff)
{
    const bool tiled = TIFFIsTiled(tiff) != 0;
    InkLayout layout{field<quint32>(tiff, TIFFTAG_IMAGEWIDTH),
                     field<quint32>(tiff, TIFFTAG_IMAGELENGTH),
                     0,
                     0,
                     field<quint16>(tiff, TIFFTAG_SAMPLESPERPIXEL),
                     field<quint16>(tiff, TIFFTAG_BITSPERSAMPLE) / 8,
                     field<quint16>(tiff, TIFFTAG_PLANARCONFIG) == PLANARCONFIG_SEPARATE,
                     tiled};
    layout.blockWidth = tiled ? field<quint32>(tiff, TIFFTAG_TILEWIDTH) : layout.width;
    layout.blockHeight = tiled ? field<quint32>(tiff, TIFFTAG_TILELENGTH)
                               : std::min(field<quint32>(tiff, TIFFTAG_ROWSPERSTRIP), layout.height);
    const quint16 bits = field<quint16>(tiff, TIFFTAG_BITSPERSAMPLE);
    const bool processInks = field<quint16>(tiff, TIFFTAG_PHOTOMETRIC) == PHOTOMETRIC_SEPARATED
                             && field<quint16>(tiff, TIFFTAG_INKSET) == INKSET_CMYK && layout.samples >= inks;
    const bool sane =
        layout.width > 0 && layout.height > 0 && layout.blockWidth > 0 && layout.blockHeight > 0
        && qint64(layout.width) * layout.height <= maxBitmapBytes / inks
        && layout.blockRowBytes() <= maxBitmapBytes / layout.blockHeight
        && qint64(inks) * layout.width * layout.height + layout.blockBytes() <= maxDecodingBytes;
    return processInks && sane && (bits == 8 || bits == 16) ? std::optional(layout) : std::nullopt;
}

/// One block's samples into the whole picture: all inks, or the one that the block holds.
void place(const std::vector<uchar>& block, const InkLayout& layout, quint32 left, quint32 top, int ink,
           QByteArray& to)
{
    const quint32 columns = std::min(layout.blockWidth, layout.width - left);
    const quint32 rows = std::min(layout.blockHeight, layout.height - top);
    const int highByte = layout.bytesPerSample - 1; // in the order of this machine, as libtiff gives them
    const int count = layout.separate ? 1 : inks;
    for (quint32 y = 0; y < rows; ++y) {
        const uchar* from = block.data() + layout.blockRowBytes() * y;
        char* row = to.data() + inks * (qint64(layout.width) * (top + y) + left) + ink;
        for (quint32 x = 0; x < columns; ++x, from += layout.samplesPerBlockPixel() * layout.bytesPerSample)
            for (int i = 0; i < count; ++i)
                row[inks * x + quint32(i)] = char(from[i * layout.bytesPerSample + highByte]);
    }
}

bool readBlock(TIFF* tiff, const InkLayout& layout, quint32 left, quint32 top, int ink,
               std::vector<uchar>& block)
{
    const auto sample = quint16(ink);
    const quint32 rows =
        layout.tiled ? layout.blockHeight : std::min(layout.blockHeight, layout.height - top);
    const auto wanted = tmsize_t(layout.blockRowBytes() * rows);
    if (layout.tiled)
        return TIFFReadEncodedTile(tiff, TIFFComputeTile(tiff, left, top, 0, sample), block.data(), wanted)
               == wanted;
    return TIFFReadEncodedStrip(tiff, TIFFComputeStrip(tiff, top, sample), block.data(), wanted) == wanted;
}

bool readBlocks(TIFF* tiff, const InkLayout& layout, int ink, QByteArray& to, const std::stop_token& stop)
{
    std::vector<uchar> block(size_t(layout.blockBytes()));
    for (quint32 top = 0; top < layout.height; top += layout.blockHeight) {
        for (quint32 left = 0; left < layout.width; left += layout.blockWidth) {
            if (stop.stop_requested() || !readBlock(tiff, layout, left, top, ink, block))
                return false;
            place(block, layout, left, top, ink, to);
        }
    }
    return true;
}

} // namespace

std::optional<InkSamples> decodeTiffInks(const QByteArray& bytes, int index, const std::stop_token& stop)
{
    Memory memory{bytes};
    const TiffPtr tiff = openTiff(memory);
    const bool isThere = tiff && TIFFSetDirectory(tiff.get(), tdir_t(index)) == 1;
    const std::optional<InkLayout> layout = isThere ? layoutOf(tiff.get()) : std::nullopt;
    if (!layout)
        return std::nullopt;
    InkSamples picture{int(layout->width), int(layout->height), false, {}};
    picture.samples.resize(qsizetype(inks) * picture.width * picture.height);
    for (int ink = 0; ink < (layout->separate ? inks : 1); ++ink)
        if (!readBlocks(tiff.get(), *layout, ink, picture.samples, stop))
            return std::nullopt;
    return picture;
}

} // namespace folvane
