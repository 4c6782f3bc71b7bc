#include "controls/Alert.h"

#include "controls/appearance.h"
#include "controls/breakableText.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace folvane {

Alert::Alert(const QString& title, const QString& text, QWidget* parent)
    : SheetFrame(title, parent), m_text(new QLabel(this))
{
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    content().addWidget(m_text);
    setText(text);
}

void Alert::setText(const QString& text)
{
    m_text->setText(breakableText(text));
    setAccessibleDescription(text);
}

void Alert::addButton(const QString& name, Role role, std::function<void()> action)
{
    const auto kind = role == Role::Default ? Button::Kind::Primary : Button::Kind::Secondary;
    auto* button = new Button(kind, name, this);
    button->setDestructive(role == Role::Destructive);
    button->setDefault(role == Role::Default);
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
    if (role == Role::Default)
        button->setFocus();
}

} // namespace folvane
