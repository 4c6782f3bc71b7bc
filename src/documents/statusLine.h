#pragma once

#include <QString>

namespace folvane {

class OpenFile;

/// "12 pages · 3 selected · password · not saved": what of it applies.
QString statusLine(const OpenFile& file);

} // namespace folvane
