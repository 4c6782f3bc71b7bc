#pragma once

#include "documents/AppModel.h"
#include "tools/stamps/StampSource.h"

#include <QWidget>

namespace folvane {

class NewStampMenu;
class PlainScrollArea;
class StampDrops;
class StampGrid;

/// The screen with the library of signatures and stamps.
class StampsView : public QWidget {
    Q_OBJECT

public:
    explicit StampsView(AppModel& model, QWidget* parent = nullptr);

    /// Gives the keyboard to the stamps, or to the first thing to do.
    void takeFocus();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QWidget* makePage();
    QLayout* makeHeader(QWidget* page);
    QWidget* makeEmptyState(QWidget* page) const;
    QWidget* makeCard(const QUuid& stamp);
    void make(const StampSource& source);
    void askForName(const StampRecord& record);
    void askToDelete(const StampRecord& record);

    AppModel& m_model;
    StampDrops* m_drops;
    PlainScrollArea* m_scroll;
    NewStampMenu* m_new;
    StampGrid* m_grid;
};

} // namespace folvane
