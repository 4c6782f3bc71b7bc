#pragma once

#include <QString>

#include <functional>
#include <stdexcept>

namespace folvane {

/// Something did not come out as a person would expect; the text is a sentence that says what.
class TourFailed : public std::runtime_error {
public:
    explicit TourFailed(const QString& sentence) : std::runtime_error(sentence.toStdString()) {}
};

/// Runs the event loop until the condition holds. Throws TourFailed with "WHAT did not happen" after half a minute.
void waitUntil(const QString& what, const std::function<bool()>& condition);

/// Runs the event loop until nothing has been painted for a little while: animations are over, and whatever was asked
/// for has come. Throws TourFailed when painting never ends.
void waitUntilStill();

/// Runs the event loop until the interface has painted `frames` times, for what hardly ever comes to rest.
void waitForFrames(int frames);

} // namespace folvane
