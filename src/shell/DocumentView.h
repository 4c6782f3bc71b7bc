#pragma once

#include "documents/AppModel.h"

#include <QWidget>

namespace folvane {

class DocumentBar;
class PageGrid;

/// The screen of an open document: its bar, the grid of its pages, and a hint.
class DocumentView : public QWidget {
    Q_OBJECT

public:
    explicit DocumentView(AppModel& model, QWidget* parent = nullptr);

    /// Without a file the view forgets what it kept between documents.
    void setFile(OpenFilePtr file);
    const OpenFilePtr& file() const { return m_file; }
    /// Gives the keyboard to the pages. (A focus proxy would hide the buttons of the bar from it.)
    void takeFocus();
    PageGrid& grid() const { return *m_grid; }
    QWidget* footer() const { return m_footer; }

private:
    QWidget* makeFooter();
    void showPageMenu(const QUuid& page, const QPoint& position);

    AppModel& m_model;
    OpenFilePtr m_file;
    DocumentBar* m_bar;
    PageGrid* m_grid;
    QWidget* m_footer;
};

} // namespace folvane
