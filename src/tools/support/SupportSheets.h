#pragma once

#include "controls/Watches.h"
#include "documents/AppModel.h"

#include <QObject>
#include <QPointer>

class QDialog;

namespace folvane {

/// Shows the request to the user that the model has up. One that comes by itself is dropped where any dialog is open already.
class SupportSheets : public QObject {
    Q_OBJECT

public:
    SupportSheets(AppModel& model, QWidget* window);
    ~SupportSheets() override;

private:
    void show();

    AppModel& m_model;
    QWidget* m_window;
    QPointer<QDialog> m_dialog;
    Watches m_watches;
};

} // namespace folvane
