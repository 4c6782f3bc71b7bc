#pragma once

#include "controls/Watches.h"

#include "documents/AppModel.h"

#include <QMainWindow>

class QStackedWidget;

namespace folvane {

class Alerts;
class BusyOverlay;
class Commands;
class DocumentView;
class HomeView;
class ToastView;

/// The one window: the sidebar beside the main area, and over them the toast, the overlay of a running job, alerts and
/// prompts. All of it shows fields of the model, so that any part of the program brings them up by setting a field.
class RootView : public QMainWindow {
    Q_OBJECT

public:
    explicit RootView(AppModel& model);
    ~RootView() override;

    DocumentView& documentView() const { return *m_document; }
    Commands& commands() const { return *m_commands; }

    /// Quits, or asks first when changes would be lost.
    void requestQuit();

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    QWidget* makeMainArea();
    void showDestination();

    AppModel& m_model;
    Commands* m_commands;
    QStackedWidget* m_pages;
    HomeView* m_home;
    DocumentView* m_document;
    ToastView* m_toast;
    BusyOverlay* m_busy;
    Alerts* m_alerts;
    Watches m_watches;
};

} // namespace folvane
