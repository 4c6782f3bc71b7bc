#pragma once

#include <QCoreApplication>
#include <QJsonObject>

#include <algorithm>
#include <chrono>
#include <vector>

namespace folvane {

/// What the window takes for each step of a motion, from the event until all is painted, in milliseconds.
template <typename Step> QJsonObject frameTimes(int frames, Step step)
{
    using Time = std::chrono::steady_clock;
    std::vector<double> times;
    for (int frame = 0; frame < frames; ++frame) {
        const Time::time_point start = Time::now();
        step(frame);
        QCoreApplication::processEvents();
        times.push_back(std::chrono::duration<double, std::milli>(Time::now() - start).count());
    }
    std::ranges::sort(times);
    return {{QStringLiteral("median"), times[times.size() / 2]},
            {QStringLiteral("p99"), times[times.size() * 99 / 100]},
            {QStringLiteral("longest"), times.back()}};
}

} // namespace folvane
