#include "Program.h"

#include "Call.h"

#include <algorithm>

namespace folvane::driver {

Program::Program() : model(Services{engine, panels, preferences, workspace, clock})
{
    // The question stands before the opening has gone to sleep: it is answered from the event loop.
    m_onPasswordRequest = model.passwordRequest.addNotifier([this] {
        if (const auto question = model.passwordRequest.value())
            QMetaObject::invokeMethod(
                &model, [this, id = question->id] { answerPasswordQuestion(id); }, Qt::QueuedConnection);
    });
}

QJsonValue Program::placeOf(const OpenFilePtr& file) const
{
    const qsizetype place = model.files.value().indexOf(file);
    return place < 0 ? QJsonValue() : QJsonValue(place);
}

void Program::answerPasswordQuestion(QUuid question)
{
    const auto asked = model.passwordRequest.value();
    if (!asked || asked->id != question)
        return;
    const auto call = std::find_if(calls.begin(), calls.end(), [&](const CallPtr& one) {
        return one->passwords.isAbout(asked->fileName);
    });
    if (call == calls.end())
        return model.answerPassword(std::nullopt);
    model.answerPassword((*call)->passwords.answer(asked->fileName, asked->wasWrong));
}

} // namespace folvane::driver
