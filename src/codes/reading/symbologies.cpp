#include "codes/reading/symbologies.h"

#include <QCoreApplication>

#include <array>

namespace folvane {

namespace {

struct SymbologyNames {
    const char* raw;
    const char* shown; ///< a product's name, which no language translates
};

/// In the order of CodeSymbology.
constexpr std::array symbologyNames{
    SymbologyNames{"qr", "QR"},
    SymbologyNames{"microQR", "Micro QR"},
    SymbologyNames{"aztec", "Aztec"},
    SymbologyNames{"dataMatrix", "Data Matrix"},
    SymbologyNames{"pdf417", "PDF417"},
    SymbologyNames{"ean13", "EAN-13"},
    SymbologyNames{"ean8", "EAN-8"},
    SymbologyNames{"upce", "UPC-E"},
    SymbologyNames{"code39", "Code 39"},
    SymbologyNames{"code93", "Code 93"},
    SymbologyNames{"code128", "Code 128"},
    SymbologyNames{"itf14", "ITF-14"},
    SymbologyNames{"i2of5", "Interleaved 2 of 5"},
    SymbologyNames{"codabar", "Codabar"},
    SymbologyNames{"gs1DataBar", "GS1 DataBar"},
    SymbologyNames{"msiPlessey", "MSI Plessey"},
    SymbologyNames{"other", nullptr},
};
static_assert(symbologyNames.size() == size_t(CodeSymbology::Other) + 1);

} // namespace

QString rawText(CodeSymbology symbology)
{
    return QString::fromLatin1(symbologyNames[size_t(symbology)].raw);
}

QString displayName(CodeSymbology symbology)
{
    if (symbology == CodeSymbology::Other) //: Card title of a code whose kind is unknown
        return QCoreApplication::translate("CodeSymbology", "Barcode");
    return QString::fromLatin1(symbologyNames[size_t(symbology)].shown);
}

} // namespace folvane
