#pragma once

#include "documents/AppModel.h"

#include <QCoro/QCoroTask>
#include <QDir>
#include <QTemporaryDir>

#include <memory>

namespace folvane {

class RootView;

/// Saves pictures of the window's screens to a folder: an aid to see how the program looks without a display. They show
/// the real window; prompts and alerts come up the way they do for a user.
class WindowPictures {
public:
    WindowPictures(AppModel& model, RootView& window, const QString& folder);

    /// Opens the files (none: a sample that it makes), and takes the pictures. Throws std::runtime_error when a picture
    /// cannot be saved or a screen does not come up.
    QCoro::Task<> take(QList<QUrl> files);

private:
    QCoro::Task<> open(QList<QUrl> files);
    QUrl makeSample() const;
    QCoro::Task<QUrl> makeLocked();
    QCoro::Task<> takePassword();
    QCoro::Task<> takeAlert();
    QCoro::Task<> takeClosing();
    QCoro::Task<> painted();
    void save(const QString& name) const;

    AppModel& m_model;
    RootView& m_window;
    QDir m_folder;
    QTemporaryDir m_temporary;
};

} // namespace folvane
