#pragma once

#include <QWidget>

namespace folvane {

/// Dims a window while something that has to be answered first stands over it.
class Veil : public QWidget {
    Q_OBJECT

public:
    explicit Veil(QWidget* window);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};

} // namespace folvane
