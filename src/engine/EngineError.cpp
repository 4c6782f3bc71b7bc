#include "engine/EngineError.h"

#include <QCoreApplication>

namespace folvane {

namespace {

std::string words(EngineError::Kind kind, const std::exception_ptr& cause)
{
    const std::string words = kind == EngineError::Kind::MissingPage ? "missing page" : "write failed";
    if (!cause)
        return words;
    try {
        std::rethrow_exception(cause);
    } catch (const std::exception& error) {
        return words + ": " + error.what();
    } catch (...) {
        return words;
    }
}

} // namespace

EngineError::EngineError(Kind kind, std::exception_ptr cause)
    : std::runtime_error(words(kind, cause)), m_kind(kind), m_cause(std::move(cause))
{
}

QString EngineError::text() const
{
    switch (m_kind) {
    case Kind::MissingPage:
        return QCoreApplication::translate("EngineError",
                                           "A page of this file can't be read anymore. Open the file again.");
    case Kind::WriteFailed:
        return QCoreApplication::translate("EngineError", "The PDF couldn't be made. Try again.");
    }
    Q_UNREACHABLE();
}

} // namespace folvane
