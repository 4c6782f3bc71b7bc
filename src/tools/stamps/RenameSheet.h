#pragma once

#include "controls/sheets/SheetFrame.h"

class QLineEdit;

namespace folvane {

/// Asks for another name.
class RenameSheet : public SheetFrame {
    Q_OBJECT

public:
    explicit RenameSheet(const QString& name, QWidget* parent = nullptr);

signals:
    void renamed(QString name);

private:
    QLineEdit* m_name;
};

} // namespace folvane
