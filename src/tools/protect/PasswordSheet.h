#pragma once

#include "documents/AppModel.h"
#include "tools/ToolSheet.h"

class QLineEdit;

namespace folvane {

/// Saves a copy of a document with a password, or without the one that it has. Remembers nothing.
class PasswordSheet : public ToolSheet {
    Q_OBJECT

public:
    PasswordSheet(AppModel& model, OpenFilePtr file, QWidget* parent = nullptr);

private:
    QLineEdit* addField(const QString& name);
    void addCopyWithout();
    void refresh();
    void saveCopy(const std::optional<QString>& password);

    AppModel& m_model;
    OpenFilePtr m_file;
    QLineEdit* m_password;
    QLineEdit* m_repeated;
    QLabel* m_mismatch;
    Button* m_save;
};

} // namespace folvane
