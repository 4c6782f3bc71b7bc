#pragma once

#include <QDialog>

namespace folvane {

/// Takes a dialog away without its answering `owner` anything. It may be in the middle of a signal, so it dies later.
/// Others stay connected: what Qt keeps about it for screen readers has to hear of its death.
inline void discard(QDialog* dialog, const QObject* owner)
{
    if (!dialog)
        return;
    dialog->disconnect(owner);
    dialog->hide();
    dialog->deleteLater();
}

} // namespace folvane
