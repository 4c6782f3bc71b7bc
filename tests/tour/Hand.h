#pragma once

#include "tour/windowPicture.h"

#include <QList>
#include <QPoint>
#include <QUrl>

#include <functional>
#include <optional>

class QMimeData;
class QWidget;
class QWindow;

namespace folvane {

/// The mouse and the keyboard: events go to the window on top, the way the system sends them, so that whatever lies over
/// a control gets them first. Points are global. Controls and entries of menus go by the name that a screen reader gives.
class Hand {
public:
    explicit Hand(QWidget& window) : m_window(window) {}

    /// What takes input now: the open menu, the dialog, or the window.
    QWidget& top() const;

    /// Whether what is on top has a control of this name, and it can be pressed.
    bool finds(const QString& name) const;
    /// Where that control stands on the screen, once it has come to rest. Throws TourFailed when there is none.
    QRect placeOf(const QString& name) const;
    void press(const QString& name);

    void click(const QPoint& at, Qt::KeyboardModifiers modifiers = {},
               Qt::MouseButton button = Qt::LeftButton);
    void doubleClick(const QPoint& at);
    void hover(const QPoint& at);
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    void type(const QString& text);
    /// Presses Tab until that control has the keyboard.
    void tabTo(const QString& name);

    enum class End { Drop, Cancel };
    /// Drags what is at `from`. `over` is called while it hangs over `to`.
    void drag(const QPoint& from, const QPoint& to, const std::function<void()>& over, End end = End::Drop);
    /// Drags files in from elsewhere.
    void dragFiles(const QList<QUrl>& files, const QPoint& to, const std::function<void()>& over,
                   End end = End::Drop);
    /// Drags what stays within its list: the mouse alone does it, without the system.
    void pull(const QPoint& from, const QPoint& to, const std::function<void()>& over = [] {});
    /// Presses at the first place, goes through the others and lets go at the last.
    void draw(const QList<QPoint>& places);
    /// What hangs under the pointer now.
    const std::optional<PlacedPicture>& dragged() const { return m_dragged; }

private:
    QWindow* target() const;
    void takeKeyboard();
    QPoint local(const QPoint& at) const;
    void carry(const QMimeData& data, const QPoint& from, const QPoint& to, const std::function<void()>& over,
               End end);

    QWidget& m_window;
    std::optional<PlacedPicture> m_dragged;
};

} // namespace folvane
