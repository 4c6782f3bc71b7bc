#pragma once

#include "tour/windowPicture.h"

#include <QList>
#include <QPoint>
#include <QUrl>

#include <functional>
#include <memory>
#include <optional>

class QMimeData;
class QWidget;
class QWindow;

namespace folvane {

class DragWatch;

/// The mouse and the keyboard: events go to the window on top, the way the system sends them, so that whatever lies over
/// a control gets them first. Points are global.
class Hand {
public:
    explicit Hand(QWidget& window);
    ~Hand();

    /// What takes input now: the open menu, the dialog, or the window.
    QWidget& top() const;

    /// Whether what is on top has a control of this name, and it can be pressed.
    bool finds(const QString& name) const;
    /// Where that control stands on the screen, once it has come to rest. Throws TourFailed when there is none.
    QRect placeOf(const QString& name) const;
    void press(const QString& name);

    void click(const QPoint& at, Qt::KeyboardModifiers modifiers = {},
               Qt::MouseButton button = Qt::LeftButton);
    void hover(const QPoint& at);
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    void type(const QString& text);

    enum class End { Drop, Cancel };
    /// Drags what is at `from`. `over` is called while it hangs over `to`; what it throws comes out of here.
    void drag(const QPoint& from, const QPoint& to, const std::function<void()>& over, End end = End::Drop);
    /// Drags files in from elsewhere.
    void dragFiles(const QList<QUrl>& files, const QPoint& to, const std::function<void()>& over,
                   End end = End::Drop);
    /// What hangs under the pointer now.
    std::optional<PlacedPicture> dragged() const;

private:
    QWindow* target() const;
    void takeKeyboard();
    QPoint local(const QPoint& at) const;
    void carryWithSystem(const QPoint& from, const QPoint& to, const std::function<void()>& over, End end);
    void carryWithoutSystem(const QPoint& from, const QPoint& to, const std::function<void()>& over, End end);
    void carry(const QMimeData& data, const QPoint& from, const QPoint& to, const std::function<void()>& over,
               End end);

    QWidget& m_window;
    QPoint m_at;
    std::unique_ptr<DragWatch> m_watch;
};

} // namespace folvane
