#include "readCodes/readByZbar.h"

#include "readCodes/geometry.h"

#include <zbar.h>

#include <initializer_list>
#include <memory>

namespace folvane {

namespace {

struct ZbarRow {
    zbar::zbar_symbol_type_t type;
    Family family;
    CodeSymbology symbology;
};

constexpr std::array zbarRows{
    ZbarRow{zbar::ZBAR_QRCODE, qrCodes, CodeSymbology::Qr},
    ZbarRow{zbar::ZBAR_EAN13, linearCodes, CodeSymbology::Ean13},
    ZbarRow{zbar::ZBAR_EAN8, linearCodes, CodeSymbology::Ean8},
    ZbarRow{zbar::ZBAR_UPCE, linearCodes, CodeSymbology::UpcE},
    ZbarRow{zbar::ZBAR_I25, linearCodes, CodeSymbology::I2of5},
    ZbarRow{zbar::ZBAR_CODABAR, linearCodes, CodeSymbology::Codabar},
    ZbarRow{zbar::ZBAR_CODE39, linearCodes, CodeSymbology::Code39},
    ZbarRow{zbar::ZBAR_CODE93, linearCodes, CodeSymbology::Code93},
    ZbarRow{zbar::ZBAR_CODE128, linearCodes, CodeSymbology::Code128},
    ZbarRow{zbar::ZBAR_DATABAR, dataBarCodes, CodeSymbology::Gs1DataBar},
    ZbarRow{zbar::ZBAR_DATABAR_EXP, dataBarCodes, CodeSymbology::Gs1DataBar},
};

CodeSymbology symbologyOf(zbar::zbar_symbol_type_t type)
{
    for (const ZbarRow& row : zbarRows)
        if (row.type == type)
            return row.symbology;
    return CodeSymbology::Other;
}

using Scanner = std::unique_ptr<zbar::zbar_image_scanner_t, decltype(&zbar::zbar_image_scanner_destroy)>;
using Image = std::unique_ptr<zbar::zbar_image_t, decltype(&zbar::zbar_image_destroy)>;

Scanner scannerFor(Families families, int everyLines)
{
    Scanner scanner(zbar::zbar_image_scanner_create(), &zbar::zbar_image_scanner_destroy);
    const auto set = [&](zbar::zbar_symbol_type_t type, zbar::zbar_config_t option, int value) {
        zbar::zbar_image_scanner_set_config(scanner.get(), type, option, value);
    };
    set(zbar::ZBAR_NONE, zbar::ZBAR_CFG_ENABLE, 0);
    for (const ZbarRow& row : zbarRows)
        set(row.type, zbar::ZBAR_CFG_ENABLE, (families & row.family) != 0);
    set(zbar::ZBAR_NONE, zbar::ZBAR_CFG_X_DENSITY, everyLines);
    set(zbar::ZBAR_NONE, zbar::ZBAR_CFG_Y_DENSITY, everyLines);
    set(zbar::ZBAR_NONE, zbar::ZBAR_CFG_POSITION, 1);
    return scanner;
}

/// Borrows the pixels, which must lie without gaps between the rows.
Image imageOf(const cv::Mat& grey)
{
    Image image(zbar::zbar_image_create(), &zbar::zbar_image_destroy);
    zbar::zbar_image_set_format(image.get(), zbar_fourcc('Y', '8', '0', '0'));
    zbar::zbar_image_set_size(image.get(), unsigned(grey.cols), unsigned(grey.rows));
    zbar::zbar_image_set_data(image.get(), grey.data, grey.total(), nullptr);
    return image;
}

std::vector<cv::Point2f> pointsOf(const zbar::zbar_symbol_t* symbol)
{
    std::vector<cv::Point2f> points;
    for (unsigned i = 0; i < zbar::zbar_symbol_get_loc_size(symbol); ++i)
        points.emplace_back(float(zbar::zbar_symbol_get_loc_x(symbol, i)),
                            float(zbar::zbar_symbol_get_loc_y(symbol, i)));
    return points;
}

/// The corners of a QR code; of others, whose points lie anywhere on the lines that were read, the box around them.
Quad quadOf(const std::vector<cv::Point2f>& points, CodeSymbology symbology)
{
    if (points.empty())
        return {};
    if (symbology == CodeSymbology::Qr && points.size() == 4)
        return {points[0], points[1], points[2], points[3]};
    return cornersOf(boxAround(points));
}

Symbol symbolOf(const zbar::zbar_symbol_t* found)
{
    const CodeSymbology symbology = symbologyOf(zbar::zbar_symbol_get_type(found));
    return {symbology,
            std::string(zbar::zbar_symbol_get_data(found), zbar::zbar_symbol_get_data_length(found)),
            quadOf(pointsOf(found), symbology), zbar::zbar_symbol_get_quality(found)};
}

} // namespace

Symbols readByZbar(const cv::Mat& grey, Families families, int everyLines)
{
    const cv::Mat pixels = grey.isContinuous() ? grey : grey.clone();
    const Scanner scanner = scannerFor(families, everyLines);
    const Image image = imageOf(pixels);
    Symbols symbols;
    if (zbar::zbar_scan_image(scanner.get(), image.get()) > 0)
        for (auto found = zbar::zbar_image_first_symbol(image.get()); found;
             found = zbar::zbar_symbol_next(found))
            symbols.push_back(symbolOf(found));
    return symbols;
}

} // namespace folvane
