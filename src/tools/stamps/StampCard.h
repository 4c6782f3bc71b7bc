#pragma once

#include "controls/Watches.h"
#include "controls/containers/Panel.h"
#include "documents/AppModel.h"

class QLabel;
class QMenu;
class QToolButton;

namespace folvane {

/// A stamp of the library with its name, and the menu to rename or delete it, which the right button of the mouse and the keys
/// bring up, too.
class StampCard : public Panel {
    Q_OBJECT

public:
    StampCard(AppModel& model, const QUuid& stamp, QWidget* parent = nullptr);

signals:
    void renameRequested(folvane::StampRecord record);
    void deleteRequested(folvane::StampRecord record);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    QLayout* makeFoot();
    QMenu* makeMenu();
    void popUp();
    void refresh();

    StampRecord m_record;
    AppModel& m_model;
    QLabel* m_name;
    QToolButton* m_more;
    Watches m_watches;
};

} // namespace folvane
