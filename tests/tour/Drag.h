#pragma once

#include <QMimeData>
#include <QObject>
#include <QPixmap>

#include <memory>
#include <optional>

class QWidget;
class QWindow;

namespace folvane {

/// What the person sees under the pointer while dragging.
struct DragPicture {
    QPixmap picture;
    QPoint hotSpot;
};

/// Notices a drag that the program starts, while this lives: what it carries and what it looks like. Some platforms
/// end a drag the moment it starts; what it carried is kept.
class DragWatch : public QObject {
    Q_OBJECT

public:
    /// For drags that begin in this window.
    explicit DragWatch(const QWidget& window);

    std::optional<DragPicture> picture() const;
    /// Null while no drag has come to its end.
    const QMimeData* carried() const { return m_carried.get(); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    const QWidget& m_window;
    std::unique_ptr<QMimeData> m_carried;
    std::optional<DragPicture> m_picture;
};

/// Tells the window of something that is dragged over it, as the system would.
class DragOver {
public:
    DragOver(QWindow& window, const QMimeData& data) : m_window(window), m_data(data) {}

    void moveTo(const QPoint& at);
    void drop(const QPoint& at);
    void leave();

private:
    QWindow& m_window;
    const QMimeData& m_data;
    bool m_entered = false;
};

} // namespace folvane
