#pragma once

#include "controls/sheets/SheetFrame.h"

#include <QString>

#include <functional>

class QLabel;

namespace folvane {

class PlainScrollArea;

/// A title, a text, and buttons in a row. Escape and the window's close do what the Cancel button does. The keyboard is on
/// the Default button, which Return presses; an alert without one has it, in sight, on Cancel: what could destroy
/// something is never pressed by a stray Return.
class Alert : public SheetFrame {
    Q_OBJECT

public:
    enum class Role { Default, Destructive, Cancel };

    Alert(const QString& title, const QString& text, QWidget* parent = nullptr);

    void setText(const QString& text);
    /// Pressing the button closes the alert, with a result other than 0 unless its role is Cancel, then does `action`.
    /// The first button stands at the right.
    void addButton(const QString& name, Role role, std::function<void()> action = [] {});

    void setVisible(bool visible) override;

private:
    void putReturnOn(Button& button, Role role);

    QLabel* m_text;
    PlainScrollArea* m_scroll;
    QList<Button*> m_fromLeft;
    bool m_marksKeyboard = false; ///< nothing but its ring shows where Return goes
};

} // namespace folvane
