#pragma once

#include "controls/TextLabel.h"

namespace folvane {

/// The small heading over a group of rows or controls. Screen readers announce it as a heading.
class SectionHeader : public TextLabel {
    Q_OBJECT

public:
    explicit SectionHeader(const QString& text, QWidget* parent = nullptr);
};

} // namespace folvane
