#pragma once

#include <QCoro/QCoroTask>

#include <QEventLoop>
#include <QTimer>

#include <chrono>
#include <exception>
#include <memory>
#include <optional>
#include <stdexcept>
#include <type_traits>
#include <utility>
#include <variant>

namespace folvane {

/// How long a test waits for a task that never ends.
inline constexpr std::chrono::seconds awaitLimit{120};

namespace detail {

struct Awaited {
    bool ended = false;
    std::exception_ptr error;
    QEventLoop loop;
};

// The state is shared: after the watchdog has barked, the task may still end.
template <typename T, typename Value>
QCoro::Task<> settle(QCoro::Task<T> task, std::shared_ptr<Awaited> state, std::shared_ptr<Value> value)
{
    try {
        if constexpr (std::is_void_v<T>)
            co_await std::move(task);
        else
            value->emplace(co_await std::move(task));
    } catch (...) {
        state->error = std::current_exception();
    }
    state->ended = true;
    state->loop.quit();
}

inline void runUntilEnded(Awaited& state, std::chrono::milliseconds limit)
{
    QTimer watchdog;
    watchdog.setSingleShot(true);
    watchdog.callOnTimeout(&state.loop, &QEventLoop::quit);
    watchdog.start(limit);
    if (!state.ended)
        state.loop.exec();
    if (!state.ended)
        throw std::runtime_error("The awaited task never ended.");
    if (state.error)
        std::rethrow_exception(std::exchange(state.error, nullptr));
}

} // namespace detail

/// Runs the event loop until the task has ended; gives its value, or throws what it threw. Throws when that
/// takes longer than the limit.
template <typename T>
T await(QCoro::Task<T> task, std::chrono::milliseconds limit = awaitLimit)
{
    using Value = std::conditional_t<std::is_void_v<T>, std::monostate, std::optional<T>>;
    const auto state = std::make_shared<detail::Awaited>();
    const auto value = std::make_shared<Value>();
    detail::settle(std::move(task), state, value);
    detail::runUntilEnded(*state, limit);
    if constexpr (!std::is_void_v<T>)
        return std::move(**value);
}

} // namespace folvane
