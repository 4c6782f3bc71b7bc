#pragma once

#include "controls/Watches.h"

#include "documents/AppModel.h"

#include <QWidget>

class QAbstractButton;
class QMenu;

namespace folvane {

class BarTitle;
class Button;
class ToolButtons;

/// The bar over a document: its name and state, and what can be done with it.
class DocumentBar : public QWidget {
    Q_OBJECT

public:
    explicit DocumentBar(AppModel& model, QWidget* parent = nullptr);

    void setFile(OpenFilePtr file);

    QSize minimumSizeHint() const override;

signals:
    /// The button that had the keyboard can't be pressed any more.
    void keyboardFreed();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QWidget* makePageButtons();
    QLayout* makeTools();
    QWidget* makeMoreButton();
    QWidget* makeSaveButton();
    void fillMoreMenu();
    void refresh();
    void turn(bool clockwise);
    void showSheet(FileSheet::Kind kind);

    AppModel& m_model;
    OpenFilePtr m_file;
    Watches m_watches;
    BarTitle* m_title;
    QAbstractButton* m_delete;
    ToolButtons* m_tools;
    Button* m_password;
    QMenu* m_more;
};

/// The command that extracts the selected pages, or all when there is none.
QString extractTitle(const OpenFile& file);
/// The Sign & Stamp command: begins with the first selected page.
void signSelected(AppModel& model, const OpenFile& file);
/// The Insert Pages command: asks for files and adds their pages.
QCoro::Task<> chooseAndInsert(AppModel& model, OpenFilePtr file);

} // namespace folvane
