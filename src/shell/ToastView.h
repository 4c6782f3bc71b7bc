#pragma once

#include "records/Toast.h"

#include <QPointer>
#include <QVariantAnimation>
#include <QWidget>

#include <optional>

class QGraphicsOpacityEffect;
class QAbstractButton;

namespace folvane {

class ElidedLabel;

/// A short notice at the bottom of `area`, above what stands there. It comes from the bottom edge and goes there, fading on the way.
class ToastView : public QWidget {
    Q_OBJECT

public:
    explicit ToastView(QWidget* area);

    void setToast(const std::optional<Toast>& toast);
    /// What stands at the bottom of the area, while it shows; null when there is nothing.
    void standOn(QWidget* footer);
    /// Neither coming nor going.
    bool isSettled() const { return m_motion.state() != QAbstractAnimation::Running; }

signals:
    void revealRequested(QUrl file);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void showText(const Toast& toast);
    void moveTo(double shown);
    void place();
    int aboveBottom() const;
    void settle();

    std::optional<Toast> m_toast;
    QPointer<QWidget> m_footer;
    ElidedLabel* m_text;
    QAbstractButton* m_reveal;
    QGraphicsOpacityEffect* m_fading;
    QVariantAnimation m_motion; ///< from 0, out of sight, to 1, in its place
    double m_shown = 0;
};

} // namespace folvane
