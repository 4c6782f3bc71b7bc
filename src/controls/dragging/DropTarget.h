#pragma once

#include <QObject>

class QDropEvent;
class QMimeData;
class QWidget;

namespace folvane {

/// Lets something be dropped on a widget, as copies. Who derives tells what.
class DropTarget : public QObject {
    Q_OBJECT

public:
    /// What it takes hangs over the widget.
    bool isUnderDrag() const { return m_isUnderDrag; }

signals:
    void underDragChanged();

protected:
    enum class Verdict {
        Take,
        Refuse, ///< nobody gets it here
        Leave,  ///< to what lies around the widget
    };

    explicit DropTarget(QWidget& target);

    virtual Verdict judge(const QMimeData& data) const = 0;
    virtual void take(const QMimeData& data) = 0;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool enter(QDropEvent& event);
    bool move(QDropEvent& event) const;
    bool drop(QDropEvent& event);
    void setUnderDrag(bool under);

    bool m_isUnderDrag = false;
};

} // namespace folvane
