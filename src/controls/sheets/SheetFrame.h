#pragma once

#include "controls/Button.h"

#include <QDialog>

class QHBoxLayout;
class QLabel;
class QVBoxLayout;

namespace folvane {

/// A sheet over a window: a title with an icon or without, content, and buttons at the right. Show it with open(),
/// which makes it modal to its window. Escape and the window's close reject it. It is as wide as told, and as high
/// as its content needs at that width. Its empty parts move it like a title bar. It gives the keyboard back to the window
/// below.
class SheetFrame : public QDialog {
    Q_OBJECT

public:
    explicit SheetFrame(const QString& title, QWidget* parent = nullptr, int width = 442);

    /// The icon before the title; its colour is the accent unless told.
    void setIcon(Icon icon);
    /// Also the window's title. Too long a title wraps.
    void setTitle(const QString& title);
    /// The same in one line of larger letters, which ends in … where it does not fit.
    void setTitleLine(const QString& title);
    QVBoxLayout& content() { return *m_content; }
    /// The room that the content has: the width of the sheet without its margins.
    int contentWidth() const;
    /// Adds a button at the right end of the row, which closes nothing by itself.
    Button* addButton(Button::Kind kind, const QString& text);

    void setVisible(bool visible) override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    QHBoxLayout& buttonRow() { return *m_buttons; }

private:
    void nameAfter(const QString& title);
    void fit();
    void keepOnScreen();
    QRect sheet() const;

    const int m_width;
    const bool m_floats; // over what lies below, with rounded corners and a shadow
    QLabel* m_icon;
    QLabel* m_title;
    QVBoxLayout* m_content;
    QHBoxLayout* m_buttons;
};

} // namespace folvane
