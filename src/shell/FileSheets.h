#pragma once

#include "controls/Watches.h"

#include "documents/AppModel.h"

#include <QObject>
#include <QPointer>

class QDialog;

namespace folvane {

/// Shows the sheet that the model asks for over a document. It goes with its field and with its document, and
/// dismissing it in any way clears the field.
class FileSheets : public QObject {
    Q_OBJECT

public:
    FileSheets(AppModel& model, QWidget* window);
    ~FileSheets() override;

private:
    void show();

    AppModel& m_model;
    QWidget* m_window;
    std::optional<FileSheet> m_shown;
    QPointer<QDialog> m_dialog;
    Watches m_watches;
};

} // namespace folvane
