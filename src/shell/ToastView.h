#pragma once

#include "documents/Toast.h"

#include <QWidget>

#include <optional>

class QToolButton;

namespace folvane {

class ElidedLabel;

/// A short notice at the bottom of `area`.
class ToastView : public QWidget {
    Q_OBJECT

public:
    explicit ToastView(QWidget* area);

    void setToast(const std::optional<Toast>& toast);

signals:
    void revealRequested(QUrl file);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void place();

    std::optional<Toast> m_toast;
    ElidedLabel* m_text;
    QToolButton* m_reveal;
};

} // namespace folvane
