#pragma once

#include <functional>

class QWidget;

namespace folvane {

class Alert;
struct QuitQuestion;

/// Changes would be lost by quitting or by the end of the session: a lossQuestion() about them.
Alert* quitAlert(const QuitQuestion& question, QWidget* window, std::function<void()> quit = [] {});

} // namespace folvane
