#pragma once

#include "controls/style/ControlState.h"

#include <QAbstractButton>
#include <QPainter>

namespace folvane {

/// A button of Qt's kind `Button` that is painted by its state alone.
template <typename Button>
class Painted : public Button {
public:
    explicit Painted(QWidget* parent) : Button(parent) { this->setAttribute(Qt::WA_Hover); }
    Painted(const QString& text, QWidget* parent) : Button(text, parent) { this->setAttribute(Qt::WA_Hover); }

protected:
    virtual void draw(QPainter& painter, const ControlState& state) const = 0;

    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        draw(painter, stateOf(*this, this->isDown()));
    }
};

/// One with a title, in which an & is no key. Return presses it, as it does every button (see returnKey.h).
class PaintedButton : public Painted<QAbstractButton> {
public:
    PaintedButton(const QString& title, Qt::FocusPolicy focus, QWidget* parent) : Painted(parent)
    {
        setText(title);
        setShortcut({});
        if (title.contains(u'&'))
            setAccessibleName(title);
        setFocusPolicy(focus);
    }
};

} // namespace folvane
