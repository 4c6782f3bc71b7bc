#pragma once

#include <QString>
#include <QUrl>

#include <optional>

namespace folvane {

/// A short notice at the bottom of the window.
struct Toast {
    QString text;
    std::optional<QUrl> reveal; ///< offers to show this file in its folder, and stays longer

    bool operator==(const Toast&) const = default;
};

} // namespace folvane
