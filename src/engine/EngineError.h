#pragma once

#include <QString>

#include <exception>
#include <stdexcept>

namespace folvane {

/// What stops a build; `text` is the sentence that the user sees, what() is for developers and tells the cause, too.
class EngineError : public std::runtime_error {
public:
    enum class Kind {
        MissingPage, ///< a page's source is not held any more, has no such page, or changed on disk
        WriteFailed, ///< a step of making the PDF failed
    };

    explicit EngineError(Kind kind, std::exception_ptr cause = nullptr);

    Kind kind() const { return m_kind; }
    QString text() const;
    /// What was thrown beneath; null when the engine found the fault itself.
    std::exception_ptr cause() const { return m_cause; }

private:
    Kind m_kind;
    std::exception_ptr m_cause;
};

} // namespace folvane
