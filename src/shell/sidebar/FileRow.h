#pragma once

#include "controls/Watches.h"
#include "shell/sidebar/SidebarRow.h"

#include "documents/AppModel.h"

class QToolButton;

namespace folvane {

/// The sidebar's row of one open document: name, mark of unsaved changes, number of pages, Close.
class FileRow : public SidebarRow {
    Q_OBJECT

public:
    FileRow(AppModel& model, OpenFilePtr file, QWidget* parent = nullptr);

    const OpenFilePtr& file() const { return m_file; }

protected:
    void resizeEvent(QResizeEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    bool event(QEvent* event) override;
    int roomAtRight() const override;
    void drawAtRight(QPainter& painter) const override;

private:
    QString pageCount() const;
    QRect dotBox() const;
    int countWidth() const;
    void refresh();

    AppModel& m_model;
    OpenFilePtr m_file;
    QToolButton* m_close;
    Watches m_watches;
};

} // namespace folvane
