#pragma once

#include <QString>

#include <stdexcept>

namespace folvane {

/// Something did not come out as a person would expect; the text is a sentence that says what.
class TourFailed : public std::runtime_error {
public:
    explicit TourFailed(const QString& sentence) : std::runtime_error(sentence.toStdString()) {}
};

} // namespace folvane
