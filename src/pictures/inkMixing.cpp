#include "pictures/inkMixing.h"

#include <array>

namespace folvane {

namespace {

struct Ink {
    float red, green, blue;
};

// Colours of the process inks and their overprints on coated paper, without black. The bits of the place: 1
// cyan, 2 magenta, 4 yellow.
constexpr std::array overprints{Ink{255, 255, 255}, Ink{0, 174, 239}, Ink{236, 0, 140}, Ink{46, 49, 146},
                                Ink{255, 242, 0},   Ink{0, 166, 81},  Ink{237, 28, 36}, Ink{54, 54, 57}};
constexpr Ink blackInk{35, 31, 32};

Ink between(const Ink& without, const Ink& with, float share)
{
    return {without.red + share * (with.red - without.red),
            without.green + share * (with.green - without.green),
            without.blue + share * (with.blue - without.blue)};
}

/// What the eye sees where each ink covers its share of the paper, by chance over the others (Neugebauer's
/// equations). Black darkens whatever lies below it.
Ink mixed(float cyan, float magenta, float yellow, float black)
{
    std::array<Ink, 4> byCyan;
    for (size_t i = 0; i < byCyan.size(); ++i)
        byCyan[i] = between(overprints[2 * i], overprints[2 * i + 1], cyan);
    const Ink plain = between(byCyan[0], byCyan[1], magenta),
              yellowed = between(byCyan[2], byCyan[3], magenta);
    const Ink colour = between(plain, yellowed, yellow);
    const Ink covered{colour.red * blackInk.red / 255, colour.green * blackInk.green / 255,
                      colour.blue * blackInk.blue / 255};
    return between(colour, covered, black);
}

} // namespace

void mixInks(const uchar* inks, uchar* rgb, qsizetype pixels, bool isInverted)
{
    const uchar flip = isInverted ? 255 : 0;
    for (const uchar* end = inks + 4 * pixels; inks != end; inks += 4, rgb += 3) {
        const auto share = [&](int i) { return float(inks[i] ^ flip) / 255; };
        const Ink ink = mixed(share(0), share(1), share(2), share(3));
        rgb[0] = uchar(ink.red + 0.5f);
        rgb[1] = uchar(ink.green + 0.5f);
        rgb[2] = uchar(ink.blue + 0.5f);
    }
}

} // namespace folvane
