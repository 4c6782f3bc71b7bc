#pragma once

#include "documents/AppModel.h"
#include "tools/stamps/StampSource.h"

#include <QWidget>

namespace folvane {

class PlainScrollArea;
class SelectedStamp;
class StampGrid;

/// The library beside a page that is being signed, and below it what can be done with the stamp that is selected there.
class StampLibraryPanel : public QWidget {
    Q_OBJECT

public:
    explicit StampLibraryPanel(AppModel& model, QWidget* parent = nullptr);

    void setSelected(const std::optional<StampPlacement>& placement);

signals:
    void placeRequested(folvane::StampRecord record);
    void removeRequested();
    void addToAllRequested();
    void rotateRequested(double degrees);

private:
    QWidget* makeLibrary();
    QWidget* makeButton(const QUuid& stamp);
    void place(const QUuid& stamp);

    AppModel& m_model;
    PlainScrollArea* m_scroll;
    StampGrid* m_grid;
    SelectedStamp* m_selected;
};

} // namespace folvane
