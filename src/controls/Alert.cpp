#include "controls/Alert.h"

#include "controls/Button.h"
#include "controls/Theme.h"
#include "controls/appearance.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace folvane {

namespace {

constexpr int textWidth = 394;

// Names of files may be one long word: it must be able to break somewhere.
QString breakable(QString text)
{
    constexpr qsizetype longest = 40;
    qsizetype run = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        run = text[i].isSpace() || text[i] == QChar::ReplacementCharacter ? 0 : run + 1;
        if (run == longest && !text[i].isHighSurrogate()) {
            text.insert(++i, QChar(0x200b)); // zero-width space
            run = 0;
        }
    }
    return text;
}

QLabel* makeLabel(const QString& text, QWidget* parent)
{
    auto* label = new QLabel(breakable(text), parent);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setFixedWidth(textWidth);
    return label;
}

// A layout asks a text that wraps for its height only after it has settled the height of the window.
void fit(QLabel* label)
{
    label->setFixedHeight(label->heightForWidth(textWidth));
}

} // namespace

Alert::Alert(const QString& title, const QString& text, QWidget* parent)
    : QDialog(parent), m_text(makeLabel(text, this)), m_buttons(new QHBoxLayout)
{
    setWindowTitle(title);
    setAccessibleName(title);
    setAccessibleDescription(text);
    auto* heading = makeLabel(title, this);
    heading->setFont(interfaceFont(17, Weight::Bold));
    fit(heading);
    fit(m_text);

    m_buttons->addStretch();
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(24, 24, 22, 20);
    column->setSpacing(10);
    column->addWidget(heading);
    column->addWidget(m_text);
    column->addSpacing(10);
    column->addLayout(m_buttons);
    column->setSizeConstraint(QLayout::SetFixedSize);
}

void Alert::setText(const QString& text)
{
    m_text->setText(breakable(text));
    fit(m_text);
    setAccessibleDescription(text);
}

void Alert::addButton(const QString& name, Role role, std::function<void()> action)
{
    const auto kind = role == Role::Default ? Button::Kind::Primary : Button::Kind::Secondary;
    auto* button = new Button(kind, name, this);
    button->setDefault(role == Role::Default);
    m_buttons->addWidget(button);
    const int result = role == Role::Cancel ? QDialog::Rejected : m_buttons->count();
    connect(button, &Button::clicked, this, [this, result, action = std::move(action)] {
        const auto run = action; // closing may delete this alert, and the closure with it
        done(result);
        run();
    });
    if (role == Role::Default)
        button->setFocus();
}

} // namespace folvane
