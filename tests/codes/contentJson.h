#pragma once

#include "codes/content/CodeContent.h"

#include <QJsonObject>

namespace folvane {

/// `kind`, and `fields` under the names that they have in the records. What is missing is null, times are ISO 8601.
QJsonObject contentJson(const CodeContent& content);

/// Nothing when no symbology has this raw text.
std::optional<CodeSymbology> symbologyOf(const QString& rawText);

} // namespace folvane
