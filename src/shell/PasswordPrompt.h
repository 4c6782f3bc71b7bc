#pragma once

#include "documents/PasswordRequest.h"

#include <QDialog>

class QLineEdit;

namespace folvane {

/// Asks for the password of one locked file. Dismissing it in any way answers none.
class PasswordPrompt : public QDialog {
    Q_OBJECT

public:
    explicit PasswordPrompt(const PasswordRequest& request, QWidget* parent = nullptr);

signals:
    void answered(std::optional<QString> password);

private:
    QLineEdit* m_password;
};

} // namespace folvane
