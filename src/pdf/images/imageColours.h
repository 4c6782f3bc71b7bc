#pragma once

#include "pdf/structure/qpdfInclude.h"

#include <QByteArray>

namespace folvane::pdf {

/// What an image's colour space asks of whoever changes its samples.
struct ImageColours {
    enum class Kind {
        Kept,    ///< samples may be averaged and stored as JPEG under the same space
        Indexed, ///< samples are numbers of colours in `base`, which is of the kind above
        Drawn,   ///< only a renderer can tell the colours
        Unknown
    };

    Kind kind = Kind::Unknown;
    int channels = 0; ///< of a pixel as it is stored; 0 when not known
    QPDFObjectHandle base;
    int baseChannels = 0;
    QByteArray palette; ///< baseChannels bytes a colour
};

/// `space` is an image's ColorSpace entry.
ImageColours imageColours(QPDFObjectHandle space);

} // namespace folvane::pdf
