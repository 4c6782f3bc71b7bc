#pragma once

#include <QLabel>

namespace folvane {

/// One line of plain text that ends in … where it does not fit, and then shows all of it as its tooltip.
class ElidedLabel : public QLabel {
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget* parent = nullptr);

    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;
};

} // namespace folvane
