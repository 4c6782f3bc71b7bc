#pragma once

#include "controls/Button.h"
#include "documents/AppModel.h"
#include "tools/stamps/StampSource.h"

class QMenu;

namespace folvane {

/// The button with the ways to a new stamp. What it is to be made from is asked here; making it is up to who listens. Pictures
/// are pasted by the keys, too, wherever in its window the keyboard is.
class NewStampMenu : public Button {
    Q_OBJECT

public:
    explicit NewStampMenu(AppModel& model, QWidget* parent = nullptr);

signals:
    void chosen(folvane::StampSource source);

private:
    QCoro::Task<> chooseFile();
    static bool canPaste();
    void paste();

    AppModel& m_model;
    QMenu* m_menu;
};

} // namespace folvane
