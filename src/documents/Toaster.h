#pragma once

#include "records/Toast.h"

#include <QCoroTask>

#include <QProperty>

#include <chrono>
#include <stop_token>

namespace folvane {

class Clock;

/// Shows toasts, each for its time: the longer one when it offers to show a file.
class Toaster {
public:
    /// Both must outlive this.
    Toaster(QProperty<std::optional<Toast>>& shown, Clock& clock) : m_shown(shown), m_clock(clock) {}
    ~Toaster();
    Q_DISABLE_COPY_MOVE(Toaster)

    /// Takes the place of the toast before.
    void show(QString text, std::optional<QUrl> reveal);

private:
    QCoro::Task<> takeAway(std::chrono::milliseconds after, std::stop_token overtaken);

    QProperty<std::optional<Toast>>& m_shown;
    Clock& m_clock;
    std::stop_source m_timer;
};

} // namespace folvane
