#pragma once

#include <QPushButton>

namespace folvane {

/// The push buttons of the program.
class Button : public QPushButton {
    Q_OBJECT

public:
    enum class Kind {
        Primary,   ///< the one thing to do, filled with the accent
        Secondary, ///< outlined
        Tool,      ///< outlined and smaller, in a bar; an icon, a text or both
    };

    Button(Kind kind, const QString& text, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor textColor() const;
    QRectF frame() const;

    Kind m_kind;
};

/// A square button of a bar with an icon only; `name` is its tooltip and what a screen reader says.
Button* iconButton(const QIcon& icon, const QString& name, QWidget* parent);

} // namespace folvane
