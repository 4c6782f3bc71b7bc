#pragma once

#include <QString>

#include <exception>

namespace folvane {

/// What stops a build; `text` is the sentence that the user sees.
class EngineError : public std::exception {
public:
    enum class Kind {
        MissingPage, ///< a page's source is not held any more, has no such page, or changed on disk
        WriteFailed, ///< a step of making the PDF failed
    };

    explicit EngineError(Kind kind) : m_kind(kind) {}

    Kind kind() const { return m_kind; }
    QString text() const;
    const char* what() const noexcept override;

private:
    Kind m_kind;
};

} // namespace folvane
