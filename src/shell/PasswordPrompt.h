#pragma once

#include "controls/sheets/SheetFrame.h"
#include "records/PasswordRequest.h"

class QLineEdit;

namespace folvane {

/// Asks for the password of one locked file. Dismissing it in any way answers none.
class PasswordPrompt : public SheetFrame {
    Q_OBJECT

public:
    explicit PasswordPrompt(const PasswordRequest& request, QWidget* parent = nullptr);

signals:
    void answered(std::optional<QString> password);

private:
    void submit();

    QLineEdit* m_password;
};

} // namespace folvane
