#pragma once

#include <QString>
#include <QUuid>

namespace folvane {

/// A question put to the user about a locked PDF.
struct PasswordRequest {
    QUuid id = QUuid::createUuid(); ///< new for each question, so that a repeated one shows afresh
    QString fileName;               ///< with its extension
    bool wasWrong = false;          ///< follows a wrong answer

    bool operator==(const PasswordRequest&) const = default;
};

} // namespace folvane
