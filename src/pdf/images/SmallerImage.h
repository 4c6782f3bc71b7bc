#pragma once

#include <QByteArray>
#include <QSize>

namespace folvane::pdf {

/// The new form of an image, eight bits a sample.
struct SmallerImage {
    enum class Packing { Jpeg, Deflated };

    Packing packing = Packing::Jpeg;
    QSize size;
    int channels = 0;
    QByteArray bytes;
};

} // namespace folvane::pdf
