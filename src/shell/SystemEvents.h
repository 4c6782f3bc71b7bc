#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QUrl>

class QSessionManager;

namespace folvane {

class AppModel;
class RootView;
struct QuitQuestion;

/// Hands what the system tells the program to the model and its window: files to open, the wish to see the window, the
/// end of the session. It stands before they do, and keeps early files for them.
class SystemEvents : public QObject {
    Q_OBJECT

public:
    SystemEvents();

    /// From here on files open at once, beginning with those that came early. Events that come after they are gone are not delivered: the event loop has ended by then.
    void attach(AppModel& model, RootView& window);

    /// Opens the files; see AppModel::open().
    void open(const QList<QUrl>& files);
    /// Opens the files, if any, and brings the window to the front with the token; see RootView::bringToFront().
    void openInFront(const QList<QUrl>& files, const QString& activationToken);

    /// Whether the session may end, as far as we are concerned. Asks what quitting asks, and blocks for the answer. With
    /// changes that nobody can be asked about it may not.
    bool allowsLogOut(bool mayAsk);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void commitData(QSessionManager& session);
    bool isGivenUp(const QuitQuestion& question);

    AppModel* m_model = nullptr;
    RootView* m_window = nullptr;
    QList<QUrl> m_pending;
};

} // namespace folvane
