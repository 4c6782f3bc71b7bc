#include "stamps/inBands.h"

#include "pictures/FanOut.h"

#include <algorithm>
#include <variant>

namespace folvane {

void inBands(int rows, const std::stop_token& stop, const std::function<void(int first, int end)>& work)
{
    const int bands = std::clamp(pixelThreads().maxThreadCount(), 1, std::max(rows, 1));
    FanOut<std::monostate> fanOut(stop);
    for (int band = 0; band < bands; ++band)
        fanOut.add([work, first = rows * band / bands, end = rows * (band + 1) / bands] {
            work(first, end);
            return std::monostate();
        });
    while (fanOut.waiting() > 0)
        fanOut.takeNext();
}

} // namespace folvane
