#include "tools/support/QRImage.h"

#include <QPainter>

#include <memory>

#include <qrencode.h>

namespace folvane::QRImage {

namespace {

constexpr int quietZone = 2; // modules on each side; the sheet around is white, too, and readers ask for 4

using Code = std::unique_ptr<QRcode, decltype(&QRcode_free)>;

Code encoded(const QByteArray& bytes)
{
    const auto* data = reinterpret_cast<const unsigned char*>(bytes.constData());
    return {QRcode_encodeData(int(bytes.size()), data, 0, QR_ECLEVEL_M), QRcode_free};
}

bool isDark(const QRcode& code, int x, int y)
{
    return code.data[y * code.width + x] & 1;
}

} // namespace

QImage image(const QString& text, int side)
{
    const Code code = encoded(text.toUtf8());
    const int module = code ? side / (code->width + 2 * quietZone) : 0;
    if (module == 0)
        return {};
    const int margin = (side - module * code->width) / 2;
    QImage picture(side, side, QImage::Format_Grayscale8);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    for (int y = 0; y < code->width; ++y)
        for (int x = 0; x < code->width; ++x)
            if (isDark(*code, x, y))
                painter.fillRect(margin + x * module, margin + y * module, module, module, Qt::black);
    return picture;
}

} // namespace folvane::QRImage
