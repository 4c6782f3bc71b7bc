#pragma once

#include <map>
#include <string>

namespace folvane::pdf {

/// A default appearance string ("/Helv 12 Tf 0 g") in which the font names, with their slash, are replaced.
std::string renamedFontsInAppearance(const std::string& appearance,
                                     const std::map<std::string, std::string>& newNames);

} // namespace folvane::pdf
