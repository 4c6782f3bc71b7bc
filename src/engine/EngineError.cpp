#include "engine/EngineError.h"

#include <QCoreApplication>

namespace folvane {

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

const char* EngineError::what() const noexcept
{
    return m_kind == Kind::MissingPage ? "missing page" : "write failed";
}

} // namespace folvane
