#include "tools/stamps/RenameSheet.h"

#include <QLineEdit>
#include <QVBoxLayout>

namespace folvane {

RenameSheet::RenameSheet(const QString& name, QWidget* parent)
    : SheetFrame(tr("Rename"), parent), m_name(new QLineEdit(name, this))
{
    m_name->setPlaceholderText(tr("Name"));
    m_name->setAccessibleName(tr("Name"));
    m_name->setMinimumHeight(34);
    m_name->selectAll();
    content().addWidget(m_name);
    Button* cancel = addButton(Button::Kind::Secondary, tr("Cancel"));
    Button* save = addButton(Button::Kind::Primary, tr("Save"));
    save->setDefault(true);
    connect(cancel, &Button::clicked, this, &QDialog::reject);
    connect(save, &Button::clicked, this, &QDialog::accept);
    connect(this, &QDialog::accepted, this, [this] { emit renamed(m_name->text()); });
    m_name->setFocus();
}

} // namespace folvane
