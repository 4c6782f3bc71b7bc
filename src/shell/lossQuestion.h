#pragma once

#include <QString>

#include <functional>

class QWidget;

namespace folvane {

class Alert;

/// Something would be lost: Cancel, which Return and Escape press, or going on by the button of that name, which then
/// does `goOn`. The caller shows it and lets go of it. Its result is 0 for Cancel.
Alert* lossQuestion(
    const QString& title, const QString& text, const QString& button, QWidget* window,
    std::function<void()> goOn = [] {});

} // namespace folvane
