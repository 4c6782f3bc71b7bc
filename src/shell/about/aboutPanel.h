#pragma once

#include <QString>

class QWidget;

namespace folvane {

class Button;
class Panel;

inline constexpr int aboutPanelPadding = 20;

/// A section of the page: a title, what it is about, and the one thing to do.
Panel* makeAboutPanel(const QString& title, const QString& text, Button* button, QWidget* page);

/// As the heading that it is.
void addTitle(Panel& panel, const QString& title);

} // namespace folvane
