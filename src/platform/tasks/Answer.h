#pragma once

#include <QCoroTask> // brings <coroutine>, which moc cannot read when it is included directly

#include <memory>
#include <optional>
#include <utility>

namespace folvane {

/// A value that one coroutine awaits and somebody else gives, once. Copies share it. For one thread.
template <typename T>
class Answer {
public:
    /// Resumes the waiting coroutine before it returns. Giving again does nothing.
    void give(T value)
    {
        const std::shared_ptr<State> state = m_state; // this copy may live in what is resumed
        if (state->value)
            return;
        state->value = std::move(value);
        if (state->waiting)
            std::exchange(state->waiting, nullptr).resume();
    }

    bool await_ready() const noexcept { return m_state->value.has_value(); }
    void await_suspend(std::coroutine_handle<> waiting) const noexcept { m_state->waiting = waiting; }
    T await_resume() const { return *m_state->value; }

private:
    struct State {
        std::optional<T> value;
        std::coroutine_handle<> waiting;
    };

    std::shared_ptr<State> m_state = std::make_shared<State>();
};

} // namespace folvane
