#pragma once

#include <QByteArray>
#include <QUrl>

#include <variant>

namespace folvane {

/// What a new stamp is made from: a picture in a file, the bytes of one, a drawing that is yet to be drawn, or a ready word.
struct StampSource {
    struct Drawing {};
    struct Ready {};

    std::variant<QUrl, QByteArray, Drawing, Ready> from;
};

} // namespace folvane
