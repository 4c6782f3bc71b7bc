#include "support/ScriptedPanels.h"

namespace folvane {

namespace {

template <typename Answer>
Answer next(QQueue<Answer>& answers)
{
    return answers.isEmpty() ? Answer() : answers.dequeue();
}

} // namespace

QCoro::Task<std::optional<QUrl>> ScriptedPanels::chooseSave(SavePanel panel)
{
    asked.append(panel);
    co_return next(saveAnswers);
}

QCoro::Task<std::optional<QUrl>> ScriptedPanels::chooseFolder(FolderPanel panel)
{
    asked.append(panel);
    co_return next(folderAnswers);
}

QCoro::Task<QList<QUrl>> ScriptedPanels::chooseOpen(OpenPanel panel)
{
    asked.append(panel);
    co_return next(openAnswers);
}

QCoro::Task<bool> ScriptedPanels::confirmReplace(QUrl existing)
{
    asked.append(ReplaceQuestion{existing});
    co_return next(replaceAnswers);
}

} // namespace folvane
