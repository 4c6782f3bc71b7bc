#pragma once

#include "platform/desktop/Panels.h"

#include <QQueue>

#include <variant>

namespace folvane {

/// A question to replace a file, as the log of ScriptedPanels keeps it.
struct ReplaceQuestion {
    QUrl existing;
    bool operator==(const ReplaceQuestion&) const = default;
};

using AskedPanel = std::variant<SavePanel, FolderPanel, OpenPanel, ReplaceQuestion>;

/// Stands in for the system's panels in tests and tools: answers come from queues, and an empty queue answers
/// Cancel.
class ScriptedPanels final : public Panels {
public:
    QQueue<std::optional<QUrl>> saveAnswers;
    QQueue<std::optional<QUrl>> folderAnswers;
    QQueue<QList<QUrl>> openAnswers;
    QQueue<bool> replaceAnswers;
    QList<AskedPanel> asked; ///< in the order of asking

    QCoro::Task<std::optional<QUrl>> chooseSave(SavePanel panel) override
    {
        return answer(panel, saveAnswers);
    }
    QCoro::Task<std::optional<QUrl>> chooseFolder(FolderPanel panel) override
    {
        return answer(panel, folderAnswers);
    }
    QCoro::Task<QList<QUrl>> chooseOpen(OpenPanel panel) override { return answer(panel, openAnswers); }
    QCoro::Task<bool> confirmReplace(QUrl existing) override
    {
        return answer(ReplaceQuestion{existing}, replaceAnswers);
    }

private:
    template <typename Answer>
    QCoro::Task<Answer> answer(AskedPanel panel, QQueue<Answer>& answers)
    {
        asked.append(panel);
        co_return answers.isEmpty() ? Answer() : answers.dequeue();
    }
};

} // namespace folvane
