#pragma once

#include "controls/Watches.h"
#include "controls/containers/Panel.h"
#include "controls/style/icons.h"
#include "documents/AppModel.h"

class QLabel;

namespace folvane {

class Button;

/// Looks for a newer version when the user asks, and tells what came of it.
class UpdatePanel : public Panel {
    Q_OBJECT

public:
    explicit UpdatePanel(AppModel& model, QWidget* parent = nullptr);

    void takeFocus();

private:
    QWidget* makeStatus();
    void refresh();
    void enableCheck(bool enabled);
    void tell(const UpdateRelease& release);
    void tell(const UpdateChecker::Failed& failure);
    void tell(const UpdateChecker::UpToDate&);
    void say(const QString& text, const QColor& color, std::optional<Icon> icon = std::nullopt);
    void download();

    AppModel& m_model;
    Button* m_check;
    QWidget* m_spinner;
    QLabel* m_icon;
    QLabel* m_status;
    Button* m_download;
    bool m_hadKeyboard = false; ///< the check button, before it was off
    Watches m_watches;
};

} // namespace folvane
