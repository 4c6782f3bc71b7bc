#pragma once

class QUrl;

namespace folvane {

class AppModel;

/// Opens it in the program that the system has for it, and tells the user when there is none. False then.
bool openLink(AppModel& model, const QUrl& link);

} // namespace folvane
