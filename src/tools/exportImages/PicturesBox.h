#pragma once

#include <QByteArray>
#include <QList>

#include <optional>

namespace folvane {

/// What the steps of one export share: the pictures of all pages are made at its first step.
struct PicturesBox {
    std::optional<QList<QByteArray>> pictures;
};

} // namespace folvane
