#include "pdf/copying/defaultAppearance.h"

#include "pdf/copying/contentNames.h"

#include <algorithm>

namespace folvane::pdf {

std::string renamedFontsInAppearance(const std::string& appearance,
                                     const std::map<std::string, std::string>& newNames)
{
    std::string result;
    size_t at = 0;
    while (at < appearance.size()) {
        size_t end = at + 1;
        if (appearance[at] == '/')
            end = std::min(appearance.find_first_of(std::string(" \t\r\n\f\0()<>[]{}/%", 16), end),
                           appearance.size());
        const std::string token = appearance.substr(at, end - at);
        const auto found = newNames.find(decodedName(token));
        result += found == newNames.end() ? token : found->second;
        at = end;
    }
    return result;
}

} // namespace folvane::pdf
