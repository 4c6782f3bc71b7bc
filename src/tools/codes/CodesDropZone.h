#pragma once

#include "documents/AppModel.h"

#include <QFrame>

namespace folvane {

class Button;

/// Where pictures and PDFs come in: by a drop, which the view around it takes, a panel, or the clipboard.
class CodesDropZone : public QFrame {
    Q_OBJECT

public:
    explicit CodesDropZone(AppModel& model, QWidget* parent = nullptr);

    /// Marks it while files hang over the view.
    void setTargeted(bool targeted);
    void takeFocus();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QLayout* makeButtons(AppModel& model);

    Button* m_open;
    bool m_isTargeted = false;
};

} // namespace folvane
