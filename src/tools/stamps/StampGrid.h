#pragma once

#include "controls/Watches.h"
#include "controls/containers/AdaptiveColumns.h"
#include "documents/AppModel.h"

#include <QFrame>

#include <functional>

namespace folvane {

class AdaptiveGrid;

/// A widget for each stamp of the library, in its order. They come and go with their stamps; where the keyboard was on
/// one that goes, the one that comes to its place has it. All are one stop of the Tab key; the arrow keys go from one to the next.
class StampGrid : public QFrame {
    Q_OBJECT

public:
    using MakeCell = std::function<QWidget*(const QUuid& stamp)>;

    StampGrid(AppModel& model, const AdaptiveColumns& columns, MakeCell makeCell, QWidget* parent = nullptr);

    /// Stands there instead while the library is empty.
    void setEmptyState(QWidget* empty);
    /// Gives the keyboard to the stamp that had it last. False: there is none.
    bool takeFocus();

signals:
    /// The keyboard came to this one.
    void reached(QWidget* cell);
    /// The keyboard was on the last stamp that there was.
    void left();

protected:
    bool eventFilter(QObject* cell, QEvent* event) override;

private:
    void refresh();
    void add(const QUuid& stamp);
    void removeAt(qsizetype index);
    void showEmptyState();
    bool goFrom(qsizetype index, Qt::Key key);
    void stopTabAt(QWidget* cell);

    AppModel& m_model;
    const MakeCell m_makeCell;
    AdaptiveGrid* m_grid;
    QList<QUuid> m_stamps;
    QList<QWidget*> m_cells;
    QWidget* m_stop = nullptr; ///< where the Tab key leads to; may have gone
    QWidget* m_empty = nullptr;
    Watches m_watches;
};

} // namespace folvane
