#pragma once

#include <QStringList>

namespace folvane {

/// The question that quitting asks when changes would be lost.
struct QuitQuestion {
    QString title;
    QString text;
    QStringList names; ///< the edited documents, oldest first

    bool operator==(const QuitQuestion&) const = default;
};

} // namespace folvane
