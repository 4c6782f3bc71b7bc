#pragma once

#include "engine/OpenResult.h"
#include "platform/tasks/Answer.h"
#include "records/PasswordRequest.h"

#include <QCoroTask>

#include <QObject>
#include <QProperty>
#include <QUrl>

#include <deque>
#include <optional>
#include <stop_token>

namespace folvane {

class Sources;

/// Opens files and asks for the passwords of those that are locked. One question is up at a time, the others wait in order
/// of arrival.
class PasswordQuestions : public QObject {
    Q_OBJECT

public:
    /// Both must outlive this; `shown` is the question that is up.
    PasswordQuestions(QProperty<std::optional<PasswordRequest>>& shown, Sources& sources);
    /// Ends all questions as Cancel does.
    ~PasswordQuestions() override;

    /// Opens a source that the caller holds, with as many rounds as the user wants. It still needs its password when the
    /// user has given up.
    QCoro::Task<OpenResult> open(QUrl url);
    /// The answer to the question that is up, if one is. None means Cancel.
    void answer(std::optional<QString> password);

private:
    struct Question {
        PasswordRequest request;
        QUrl url;
        Answer<std::optional<QString>> answer;
    };

    QCoro::Task<std::optional<QString>> ask(QUrl url, bool wasWrong);
    void answerFirst(std::optional<QString> password);
    QCoro::Task<> showNext();

    QProperty<std::optional<PasswordRequest>>& m_shown;
    Sources& m_sources;
    std::stop_source m_end;
    std::deque<Question> m_questions; ///< the first one is up, or about to be
};

} // namespace folvane
