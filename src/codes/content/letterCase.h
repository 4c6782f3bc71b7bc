#pragma once

#include <QString>

namespace folvane::codes {

// The full mappings of Unicode, in no language. Those of QString take quadratic time where letters become several.
QString upperCase(QStringView text);
QString lowerCase(QStringView text);

} // namespace folvane::codes
