#define ZX_USE_UTF8 // text() as UTF-8; must stand before the library's headers
#include "readCodes/readByZxing.h"

#include <ZXing/BarcodeFormat.h>
#include <ZXing/Content.h>
#include <ZXing/DecodeHints.h>
#include <ZXing/ReadBarcode.h>

namespace folvane {

namespace {

using ZXing::BarcodeFormat;

CodeSymbology symbologyOf(BarcodeFormat format)
{
    switch (format) {
    case BarcodeFormat::QRCode: return CodeSymbology::Qr;
    case BarcodeFormat::MicroQRCode: return CodeSymbology::MicroQr;
    case BarcodeFormat::Aztec: return CodeSymbology::Aztec;
    case BarcodeFormat::DataMatrix: return CodeSymbology::DataMatrix;
    case BarcodeFormat::PDF417: return CodeSymbology::Pdf417;
    case BarcodeFormat::EAN13:
    case BarcodeFormat::UPCA: return CodeSymbology::Ean13;
    case BarcodeFormat::EAN8: return CodeSymbology::Ean8;
    case BarcodeFormat::UPCE: return CodeSymbology::UpcE;
    case BarcodeFormat::Code39: return CodeSymbology::Code39;
    case BarcodeFormat::Code93: return CodeSymbology::Code93;
    case BarcodeFormat::Code128: return CodeSymbology::Code128;
    case BarcodeFormat::ITF: return CodeSymbology::I2of5;
    case BarcodeFormat::Codabar: return CodeSymbology::Codabar;
    default: return CodeSymbology::Other;
    }
}

ZXing::BarcodeFormats formatsOf(Families families)
{
    struct Row {
        Family family;
        ZXing::BarcodeFormats formats;
    };
    static const std::array rows{
        Row{qrCodes, BarcodeFormat::QRCode},
        Row{microQrCodes, BarcodeFormat::MicroQRCode},
        Row{aztecCodes, BarcodeFormat::Aztec},
        Row{dataMatrixCodes, BarcodeFormat::DataMatrix},
        Row{pdf417Codes, BarcodeFormat::PDF417},
        Row{linearCodes, BarcodeFormat::EAN13 | BarcodeFormat::EAN8 | BarcodeFormat::UPCE
                             | BarcodeFormat::Code39 | BarcodeFormat::Code93 | BarcodeFormat::Code128
                             | BarcodeFormat::ITF | BarcodeFormat::Codabar},
    };
    ZXing::BarcodeFormats formats;
    for (const Row& row : rows)
        if (families & row.family)
            formats |= row.formats;
    return formats;
}

ZXing::DecodeHints hintsFor(Families families, Threshold threshold, Turns turns)
{
    return ZXing::DecodeHints()
        .setFormats(formatsOf(families))
        .setBinarizer(threshold == Threshold::Global ? ZXing::Binarizer::GlobalHistogram
                                                     : ZXing::Binarizer::LocalAverage)
        .setTryHarder(true)
        .setTryRotate(turns == Turns::Yes)
        .setTryDownscale(false) // costs more than it finds: candidates are brought to size anyway
        .setTryCode39ExtendedMode(true);
}

bool isText(const ZXing::Result& result)
{
    return result.isValid() && result.contentType() != ZXing::ContentType::Binary
           && result.contentType() != ZXing::ContentType::UnknownECI;
}

Symbol symbolOf(const ZXing::Result& result)
{
    Symbol symbol{symbologyOf(result.format()), result.text(), {}, result.lineCount()};
    for (size_t i = 0; i < symbol.corners.size(); ++i)
        symbol.corners[i] = cv::Point2f(float(result.position()[i].x), float(result.position()[i].y));
    return symbol;
}

Symbols read(const cv::Mat& grey, const ZXing::DecodeHints& hints)
{
    const ZXing::ImageView view(grey.data, grey.cols, grey.rows, ZXing::ImageFormat::Lum, int(grey.step));
    Symbols symbols;
    if (hints.formats().empty()) // which would mean all
        return symbols;
    for (const ZXing::Result& result : ZXing::ReadBarcodes(view, hints))
        if (isText(result))
            symbols.push_back(symbolOf(result));
    return symbols;
}

bool givesOneBarCode = false;

/// The library stops at the number of lines asked for, so those that the filters want are asked for first.
Symbols readOneBarCode(const cv::Mat& grey, Threshold threshold, Turns turns)
{
    ZXing::DecodeHints hints = hintsFor(linearCodes, threshold, turns).setMaxNumberOfSymbols(1);
    const Symbols wellSeen = read(grey, hints.setMinLineCount(3));
    return wellSeen.empty() ? read(grey, hints.setMinLineCount(2)) : wellSeen;
}

} // namespace

void giveOneBarCode()
{
    givesOneBarCode = true;
}

Symbols readByZxing(const cv::Mat& grey, Families families, Threshold threshold, Turns turns)
{
    if (!givesOneBarCode || !(families & linearCodes))
        return read(grey, hintsFor(families, threshold, turns));
    Symbols symbols = read(grey, hintsFor(families & ~linearCodes, threshold, turns));
    for (const Symbol& symbol : readOneBarCode(grey, threshold, turns))
        symbols.push_back(symbol);
    return symbols;
}

} // namespace folvane
