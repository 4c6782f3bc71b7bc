#pragma once

#include <QStringList>

class QObject;

namespace folvane {

/// The titles of a menu with an & before the letter that chooses each: the first of a word where it is free, else any
/// letter that is. Titles that have one keep it; where no letter is left a title has none.
QStringList withMnemonics(const QStringList& titles);

/// The title of an entry or a button in which an & is a letter.
QString literal(QString title);

/// Gives every menu mnemonics when it shows, and underlines them once Alt is pressed, as long as it is held or a menu that
/// was reached with it is up. Installed once, on the application.
void installMnemonics(QObject& application);

/// Whether they are underlined now.
bool showsMnemonics();

} // namespace folvane
