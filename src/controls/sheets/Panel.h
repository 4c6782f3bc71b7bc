#pragma once

#include <QFrame>

class QVBoxLayout;

namespace folvane {

/// A surface with rounded corners and a soft shadow that holds content. A layout places it by its surface (see
/// visualMargin.h): the shadow, 15 pixels at the sides, 11 above and 19 below, lies over spacings and margins.
class Panel : public QFrame {
    Q_OBJECT

public:
    explicit Panel(QWidget* parent = nullptr, int padding = 20);

    /// What stands in the panel, from top to bottom, as wide as the padding leaves.
    QVBoxLayout& content() { return *m_content; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QVBoxLayout* m_content;
};

} // namespace folvane
