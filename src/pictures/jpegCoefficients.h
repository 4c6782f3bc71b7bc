#pragma once

#include <QtGlobal>

#include <cstdio>

#include <jpeglib.h>

namespace folvane {

/// What libjpeg keeps of a JPEG in several scans until the last one, in bytes; 0 for others. After the header is read.
inline qint64 coefficientBytes(jpeg_decompress_struct& decoder)
{
    if (!jpeg_has_multiple_scans(&decoder))
        return 0;
    qint64 blocks = 0;
    for (int i = 0; i < decoder.num_components; ++i)
        blocks += qint64(decoder.comp_info[i].width_in_blocks) * decoder.comp_info[i].height_in_blocks;
    return blocks * qint64(sizeof(JBLOCK));
}

} // namespace folvane
