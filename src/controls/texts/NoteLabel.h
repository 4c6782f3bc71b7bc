#pragma once

#include "controls/TextLabel.h"

namespace folvane {

/// A text that explains: in the secondary colour, and it wraps.
class NoteLabel : public TextLabel {
    Q_OBJECT

public:
    NoteLabel(const QString& text, double pixels, QWidget* parent = nullptr);
};

} // namespace folvane
