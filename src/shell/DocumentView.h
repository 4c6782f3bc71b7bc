#pragma once

#include "controls/Watches.h"

#include "documents/AppModel.h"

#include <QWidget>

class QLabel;
class QMenu;

namespace folvane {

class Button;
class ElidedLabel;
class PageGrid;

/// The screen of an open document: its name, state and commands, the grid of its pages, and a hint.
class DocumentView : public QWidget {
    Q_OBJECT

public:
    explicit DocumentView(AppModel& model, QWidget* parent = nullptr);

    void setFile(OpenFilePtr file);
    PageGrid& grid() const { return *m_grid; }

private:
    QWidget* makeTopBar();
    QWidget* makeFooter();
    void refresh();
    void turn(bool clockwise);
    void fillMoreMenu();
    void showPageMenu(const QUuid& page, const QPoint& position);

    AppModel& m_model;
    OpenFilePtr m_file;
    Watches m_watches;
    ElidedLabel* m_name;
    QLabel* m_status;
    Button* m_delete;
    Button* m_extract;
    Button* m_save;
    QMenu* m_more;
    PageGrid* m_grid;
};

/// The command that extracts the selected pages, or all when there is none.
QString extractTitle(const OpenFile& file);
/// The Insert Pages command: asks for files and adds their pages.
QCoro::Task<> chooseAndInsert(AppModel* model, OpenFilePtr file);

} // namespace folvane
