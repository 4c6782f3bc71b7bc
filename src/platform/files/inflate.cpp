#include "platform/files/inflate.h"

#include <algorithm>
#include <limits>

#include <zlib.h>

namespace folvane {

namespace {

constexpr int eitherHeader = 32 + MAX_WBITS; // zlib's or gzip's, told by its first bytes

} // namespace

QByteArray inflated(QByteArrayView packed, qsizetype limit)
{
    z_stream stream{};
    if (packed.size() > std::numeric_limits<uInt>::max() || inflateInit2(&stream, eitherHeader) != Z_OK)
        return {};
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.data())); // zlib only reads it
    stream.avail_in = uInt(packed.size());
    QByteArray bytes, block(1 << 16, Qt::Uninitialized);
    int status = Z_OK;
    while (status == Z_OK && bytes.size() <= limit) {
        stream.next_out = reinterpret_cast<Bytef*>(block.data());
        stream.avail_out = uInt(block.size());
        status = inflate(&stream, Z_NO_FLUSH);
        bytes.append(block.constData(), block.size() - qsizetype(stream.avail_out));
    }
    inflateEnd(&stream);
    return status == Z_STREAM_END && bytes.size() <= limit ? bytes : QByteArray();
}

} // namespace folvane
