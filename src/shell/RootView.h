#pragma once

#include "controls/Watches.h"

#include "documents/AppModel.h"

#include <QMainWindow>

class QStackedWidget;

namespace folvane {

class AboutView;
class Alerts;
class BusyOverlay;
class CodesView;
class Commands;
class DocumentView;
class FileSheets;
class HomeView;
class MergeView;
class SidebarView;
class SignView;
class StampsView;
class SupportSheets;
class ToastView;
class WindowCommands;

/// The one window: the sidebar beside the main area, and over them the toast, the overlay of a running job, alerts and
/// prompts. All of it shows fields of the model, so that any part of the program brings them up by setting a field. Its
/// size and place are kept in the preferences.
///
/// Closed with changes or during a job it only steps aside: it comes back with the next message to the user, and when
/// nothing would be lost any more, the program ends.
class RootView : public QMainWindow {
    Q_OBJECT

public:
    explicit RootView(AppModel& model);
    ~RootView() override;

    DocumentView& documentView() const { return *m_document; }
    MergeView& mergeView() const { return *m_merge; }
    SignView& signView() const { return *m_sign; }

    /// Quits, or asks first when changes would be lost.
    void requestQuit();
    /// Whether the desktop can bring a hidden window back. Without that, closing with changes only minimizes it.
    void setCanComeBack(bool can) { m_canComeBack = can; }
    /// Shows the window over the others, also from hidden or minimized, and a question before it. The token is what the
    /// desktop gave to whoever asked for it; empty when there is none. Returns the one that now has the keyboard.
    QWidget& bringToFront(const QString& activationToken);

protected:
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    QWidget* makeMainArea();
    void connectCommands();
    QWidget* viewOf(const OpenFilePtr& file) const;
    void showDestination();
    void showToast();
    void takeFocus();
    /// Nothing would be lost.
    bool mayEnd() const;
    void followClosed();
    void setSidebarShown(bool shown);

    AppModel& m_model;
    Commands* m_commands;
    WindowCommands* m_windowCommands;
    SidebarView* m_sidebar;
    QStackedWidget* m_pages;
    HomeView* m_home;
    DocumentView* m_document;
    MergeView* m_merge;
    SignView* m_sign;
    StampsView* m_stamps;
    CodesView* m_codes;
    AboutView* m_about;
    ToastView* m_toast;
    BusyOverlay* m_busy;
    FileSheets* m_sheets;
    Alerts* m_alerts;
    SupportSheets* m_support;
    bool m_canComeBack = false;
    bool m_isClosed = false; ///< the program goes on without it
    Watches m_watches;
};

} // namespace folvane
