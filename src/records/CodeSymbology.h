#pragma once

namespace folvane {

/// The kind of a code. ITF-14 is Interleaved 2 of 5 with 14 digits and a right check digit.
enum class CodeSymbology {
    Qr,
    MicroQr,
    Aztec,
    DataMatrix,
    Pdf417,
    Ean13,
    Ean8,
    UpcE,
    Code39,
    Code93,
    Code128,
    Itf14,
    I2of5,
    Codabar,
    Gs1DataBar,
    MsiPlessey,
    Other
};

} // namespace folvane
