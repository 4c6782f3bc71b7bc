#pragma once

#include "controls/Watches.h"

#include "documents/AppModel.h"

#include <QWidget>

class QLabel;
class QMenu;
class QStackedWidget;

namespace folvane {

class Button;
class FileDrops;
class MergeList;

/// The screen that joins several files into one.
class MergeView : public QWidget {
    Q_OBJECT

public:
    explicit MergeView(AppModel& model, QWidget* parent = nullptr);

    /// Gives the keyboard to the list, or to the first thing to do.
    void takeFocus();
    MergeList& list() const { return *m_list; }
    QWidget* footer() const { return m_footer; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QLayout* makeHeader();
    QWidget* makeAddButton();
    QWidget* makeEmptyState();
    QWidget* makeFilledState();
    QWidget* makeFooter(QWidget* parent);
    void fillAddMenu();
    void refresh();

    AppModel& m_model;
    FileDrops* m_drops;
    QStackedWidget* m_states;
    MergeList* m_list;
    Button* m_add;
    QMenu* m_addMenu;
    QWidget* m_footer;
    QLabel* m_count;
    Button* m_merge;
    Watches m_watches;
};

} // namespace folvane
