#include "pdf/stamping/contentText.h"

#include <array>
#include <charconv>
#include <limits>

namespace folvane::pdf {

// Not by the library, whose way through a stream would take a tenth of the time of stamping many pages.
std::string number(double value)
{
    constexpr int decimals = 6;
    std::array<char, std::numeric_limits<double>::max_exponent10 + decimals + 4> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value,
                                   std::chars_format::fixed, decimals);
    std::string text(digits.data(), end.ptr);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.ends_with('.'))
        text.pop_back();
    return text;
}

} // namespace folvane::pdf
