#include "Program.h"

#include "Call.h"

#include <algorithm>

namespace folvane::driver {

Program::Program() : model(Services{engine, panels, preferences, workspace, clock})
{
    // The question stands before the opening has gone to sleep: it is answered from the event loop.
    m_onPasswordRequest = model.passwordRequest.addNotifier([this] {
        QMetaObject::invokeMethod(&model, [this] { answerPasswordQuestion(); }, Qt::QueuedConnection);
    });
}

QJsonValue Program::placeOf(const OpenFilePtr& file) const
{
    const qsizetype place = model.files.value().indexOf(file);
    return place < 0 ? QJsonValue() : QJsonValue(place);
}

void Program::answerPasswordQuestion()
{
    const auto asked = model.passwordRequest.value();
    if (!asked)
        return;
    const auto isAbout = [&](const CallPtr& call) { return call->passwords.isAbout(asked->fileName); };
    const auto call = std::ranges::find_if(calls, isAbout);
    if (call == calls.end())
        return model.answerPassword(std::nullopt);
    (*call)->reply.prompts.append(QJsonObject{{"fileName", asked->fileName}, {"wasWrong", asked->wasWrong}});
    model.answerPassword((*call)->passwords.answer(asked->fileName, asked->wasWrong));
}

} // namespace folvane::driver
