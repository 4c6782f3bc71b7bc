#include "tools/protect/PasswordSheet.h"

#include "platform/tasks/spawn.h"
#include "tools/protect/protecting.h"

#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace folvane {

PasswordSheet::PasswordSheet(AppModel& model, OpenFilePtr file, QWidget* parent)
    : ToolSheet(file->password ? Icon::Lock : Icon::LockOutline, tr("Password"), parent),
      m_model(model),
      m_file(std::move(file))
{
    if (m_file->password) {
        addText(tr("“%1” is protected with a password. Save a copy that opens without it, or a copy with a "
                   "new one.")
                    .arg(m_file->name));
        addCopyWithout();
    } else {
        addText(tr("Save a copy that asks for this password to open. Keep it somewhere safe: it can't be "
                   "recovered."));
    }
    m_password = addField(m_file->password ? tr("New password") : tr("Password"));
    m_repeated = addField(tr("Repeat password"));
    m_mismatch = addText(tr("The passwords don't match."), 12, theme::danger);
    QSizePolicy policy = m_mismatch->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    m_mismatch->setSizePolicy(policy);
    m_save = addButtons(tr("Save Protected Copy…"));
    connect(m_save, &Button::clicked, this, [this] { saveCopy(m_password->text()); });
    m_password->setFocus();
    refresh();
}

QLineEdit* PasswordSheet::addField(const QString& name)
{
    auto* field = new QLineEdit(this);
    field->setEchoMode(QLineEdit::Password);
    field->setPlaceholderText(name);
    field->setAccessibleName(name);
    field->setMinimumHeight(34);
    content().addWidget(field);
    connect(field, &QLineEdit::textChanged, this, &PasswordSheet::refresh);
    return field;
}

void PasswordSheet::addCopyWithout()
{
    auto* without = new Button(Button::Kind::Secondary, tr("Save a Copy without Password…"), this);
    without->setAutoDefault(false);
    content().addWidget(without, 0, Qt::AlignLeft);
    connect(without, &Button::clicked, this, [this] { saveCopy(std::nullopt); });
}

void PasswordSheet::refresh()
{
    const bool equal = m_password->text() == m_repeated->text();
    m_mismatch->setVisible(!equal && !m_repeated->text().isEmpty());
    m_save->setEnabled(equal && !m_password->text().isEmpty());
}

void PasswordSheet::saveCopy(const std::optional<QString>& password)
{
    accept();
    spawn(saveProtectedCopy(m_model, m_file, password));
}

} // namespace folvane
