#pragma once

#include <QLabel>

namespace folvane {

/// A plain text in one font and colour.
class TextLabel : public QLabel {
    Q_OBJECT

public:
    TextLabel(const QString& text, const QFont& font, const QColor& color, QWidget* parent = nullptr);
};

} // namespace folvane
