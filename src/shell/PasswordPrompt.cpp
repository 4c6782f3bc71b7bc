#include "shell/PasswordPrompt.h"

#include "controls/Button.h"
#include "controls/TextLabel.h"
#include "controls/appearance.h"
#include "controls/style/Theme.h"

#include <QLineEdit>
#include <QVBoxLayout>

namespace folvane {

PasswordPrompt::PasswordPrompt(const PasswordRequest& request, QWidget* parent)
    : SheetFrame(tr("“%1” is locked").arg(request.fileName), parent), m_password(new QLineEdit(this))
{
    setIcon(Icon::Lock);
    auto* text =
        new TextLabel(request.wasWrong ? tr("That password didn't open it. Try again.")
                                       : tr("Enter its password to open it. The password stays on this Mac."),
                      interfaceFont(13), request.wasWrong ? theme::danger : theme::text, this);
    text->setWordWrap(true);
    m_password->setEchoMode(QLineEdit::Password);
    m_password->setPlaceholderText(tr("Password"));
    m_password->setAccessibleName(tr("Password"));
    m_password->setMinimumHeight(34);
    content().addWidget(text);
    content().addWidget(m_password);

    Button* cancel = addButton(Button::Kind::Secondary, tr("Cancel"));
    Button* open = addButton(Button::Kind::Primary, tr("Open"));
    open->setDefault(true);
    open->setEnabled(false);
    connect(m_password, &QLineEdit::textChanged, open,
            [open](const QString& typed) { open->setEnabled(!typed.isEmpty()); });
    connect(cancel, &Button::clicked, this, &QDialog::reject);
    connect(open, &Button::clicked, this, &PasswordPrompt::submit);
    connect(this, &QDialog::accepted, this, [this] { emit answered(m_password->text()); });
    connect(this, &QDialog::rejected, this, [this] { emit answered(std::nullopt); });
    m_password->setFocus();
}

void PasswordPrompt::submit()
{
    if (!m_password->text().isEmpty())
        accept();
}

} // namespace folvane
