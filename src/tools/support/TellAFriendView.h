#pragma once

#include "controls/sheets/SheetFrame.h"
#include "documents/AppModel.h"

namespace folvane {

/// Asks the user to tell a friend about the program: by mail, or by what is then on the clipboard.
class TellAFriendView : public SheetFrame {
    Q_OBJECT

public:
    TellAFriendView(AppModel& model, QUrl productPage, QWidget* parent = nullptr);

    /// The sentence that is shared.
    static QString message();
    /// A mail with the sentence and the page, to nobody yet.
    static QUrl mail(const QUrl& productPage);

private:
    void addMessage();
    void addButtons();
    void share();
    void copyMessage();
    void answered();

    AppModel& m_model;
    const QUrl m_productPage;
    Button* m_copy;
    Button* m_close;
};

} // namespace folvane
