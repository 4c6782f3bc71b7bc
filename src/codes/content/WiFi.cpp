#include "codes/content/WiFi.h"

#include "codes/content/MeFields.h"
#include "codes/content/characters.h"
#include "codes/content/letterCase.h"

namespace folvane::codes {

// 1. S is the name of the network and must not be empty.
// 2. P is the password, T the security as written.
// 3. The network is hidden when H is "true" in any case.
std::optional<WiFi> wifi(QStringView text)
{
    const MeFields fields(withoutFirst(text, 5));
    const QString ssid = fields.valueOrEmpty("S");
    if (ssid.isEmpty())
        return std::nullopt;
    return WiFi{ssid, fields.find("P"), fields.valueOrEmpty("T"),
                lowerCase(fields.valueOrEmpty("H")) == QLatin1String("true")};
}

} // namespace folvane::codes
