#pragma once

#include "controls/containers/Panel.h"
#include "controls/style/icons.h"

#include <QList>
#include <QUrl>

namespace folvane {

class AppModel;

/// Rows that each open an address in the program that the system has for it.
class LinksPanel : public Panel {
    Q_OBJECT

public:
    struct Link {
        Icon icon;
        QString title;
        QUrl address;
    };

    LinksPanel(AppModel& model, const QString& title, const QList<Link>& links, QWidget* parent = nullptr);
};

} // namespace folvane
