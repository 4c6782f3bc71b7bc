#pragma once

#include "support/ScriptedPanels.h"

#include <QJsonArray>

namespace folvane::driver {

class Request;

/// Answers the model's panels from the request, and tells what they asked.
class PanelScript {
public:
    Panels& panels() { return m_panels; }

    /// Takes the answers from `to`, `folder`, `files` and `replace`; the earlier ones are forgotten.
    void load(const Request& request);
    /// What was asked since it was last taken.
    QJsonArray takeAsked();
    /// More panels that ask for a place came up than the request has answers for: the last one ended with Cancel.
    bool wasCancelled() const;

private:
    ScriptedPanels m_panels;
    qsizetype m_savesAnswered = 0;
    qsizetype m_foldersAnswered = 0;
};

} // namespace folvane::driver
