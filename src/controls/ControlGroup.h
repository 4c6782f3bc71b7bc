#pragma once

#include "controls/style/icons.h"

#include <QWidget>

class QAbstractButton;
class QHBoxLayout;

namespace folvane {

/// Buttons with icons joined in one outlined bar, with lines between them. As high as a tool button.
class ControlGroup : public QWidget {
    Q_OBJECT

public:
    explicit ControlGroup(QWidget* parent = nullptr);

    /// Adds a button at the end; `name` is what a screen reader says, `tip` its tooltip.
    QAbstractButton* addButton(Icon icon, const QString& name, const QString& tip);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QHBoxLayout* m_row;
};

} // namespace folvane
