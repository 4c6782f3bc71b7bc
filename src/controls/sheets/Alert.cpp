#include "controls/sheets/Alert.h"

#include "controls/appearance.h"
#include "controls/containers/PlainScrollArea.h"
#include "controls/texts/breakableText.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include <algorithm>

namespace folvane {

namespace {

constexpr int highestText = 320; // what is longer scrolls, so that the buttons stay on the screen

} // namespace

Alert::Alert(const QString& title, const QString& text, QWidget* parent)
    : SheetFrame(title, parent), m_text(new QLabel), m_scroll(new PlainScrollArea(this))
{
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    m_text->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    m_scroll->setPage(m_text);
    content().addWidget(m_scroll);
    setText(text);
}

void Alert::setText(const QString& text)
{
    m_text->setText(breakableText(text));
    m_scroll->setFixedHeight(std::min(m_text->heightForWidth(contentWidth()), highestText));
    setAccessibleDescription(text);
}

void Alert::addButton(const QString& name, Role role, std::function<void()> action)
{
    const auto kind = role == Role::Default ? Button::Kind::Primary : Button::Kind::Secondary;
    auto* button = new Button(kind, name, this);
    button->setDestructive(role == Role::Destructive);
    constexpr int afterTheStretch = 1;
    buttonRow().insertWidget(afterTheStretch, button);
    m_fromLeft.prepend(button);
    for (qsizetype i = 1; i < m_fromLeft.size(); ++i)
        setTabOrder(m_fromLeft[i - 1], m_fromLeft[i]);
    const int result = role == Role::Cancel ? QDialog::Rejected : buttonRow().count();
    connect(button, &Button::clicked, this, [this, result, action = std::move(action)] {
        const auto run = action; // closing may delete this alert, and the closure with it
        done(result);
        run();
    });
    putReturnOn(*button, role);
}

void Alert::putReturnOn(Button& button, Role role)
{
    const bool hasDefault = std::ranges::any_of(m_fromLeft, &QPushButton::isDefault);
    if (role != Role::Default && (role != Role::Cancel || hasDefault))
        return;
    button.setDefault(true);
    button.setFocus();
    m_marksKeyboard = role == Role::Cancel;
}

// A window that comes up begins without the marks of the keyboard.
void Alert::setVisible(bool visible)
{
    SheetFrame::setVisible(visible);
    if (visible && m_marksKeyboard)
        setAttribute(Qt::WA_KeyboardFocusChange);
}

} // namespace folvane
