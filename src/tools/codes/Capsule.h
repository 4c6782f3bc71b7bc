#pragma once

#include "controls/TextLabel.h"

namespace folvane {

/// A word on a capsule.
class Capsule : public TextLabel {
    Q_OBJECT

public:
    explicit Capsule(const QString& text, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace folvane
