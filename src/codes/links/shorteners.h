#pragma once

#include <QSet>
#include <QString>

namespace folvane {

/// Registrable domains whose addresses lead anywhere.
const QSet<QString>& shorteners();

} // namespace folvane
