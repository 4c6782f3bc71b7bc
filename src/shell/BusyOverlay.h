#pragma once

#include "records/BusyState.h"

#include <QPointer>
#include <QWidget>

#include <optional>

class QLabel;

namespace folvane {

class Button;

/// Covers the whole window while a job runs, and can cancel it: by Escape or by its button, to which the Tab key leads. It
/// takes the keyboard, and gives it back to where it was; Return, which may still come from the question before, does
/// nothing.
class BusyOverlay : public QWidget {
    Q_OBJECT

public:
    explicit BusyOverlay(QWidget* window);

    void setState(const std::optional<BusyState>& state);

signals:
    void cancelled();
    /// The job has ended, and what had the keyboard before is not there any more.
    void keyboardFreed();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    void giveKeyboardBack();

    QWidget* m_panel;
    QLabel* m_title;
    Button* m_cancel;
    QPointer<QWidget> m_focusBefore;
};

} // namespace folvane
