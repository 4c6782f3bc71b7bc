#pragma once

#include "documents/AppModel.h"
#include "documents/currentFile.h"
#include "engine/PDFEngine.h"
#include "platform/desktop/Preferences.h"
#include "platform/tasks/Clock.h"
#include "support/ScriptedPanels.h"
#include "support/ScriptedWorkspace.h"
#include "tools/compress/CompressMeasuring.h"

#include <QJsonValue>
#include <QPropertyNotifier>

#include <map>
#include <memory>

namespace folvane::driver {

class Call;
using CallPtr = std::shared_ptr<Call>;

/// The real model with everything that it needs, and nobody in front of it.
class Program {
public:
    Program();

    /// The 0-based place of a document in the model's list; null when it is not there.
    QJsonValue placeOf(const OpenFilePtr& file) const;
    /// That of the document that is shown; null when none is.
    QJsonValue shownFile() const { return placeOf(currentFile(model)); }

    PDFEngine engine;
    ScriptedPanels panels;
    SettingsPreferences preferences;
    ScriptedWorkspace workspace;
    SystemClock clock;
    AppModel model;

    std::map<int, CallPtr> jobs; ///< the requests that go on by themselves and nobody has waited for
    int lastJob = 0;
    QList<CallPtr> calls; ///< all requests under way, oldest first

    /// What a request has measured of the pages that a document had then.
    struct Measured {
        std::vector<PageItem> pages;
        CompressMeasuring::Results results;
    };
    std::map<QUuid, Measured> measured; ///< by document

private:
    void answerPasswordQuestion();

    QPropertyNotifier m_onPasswordRequest;
};

} // namespace folvane::driver
