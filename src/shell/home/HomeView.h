#pragma once

#include "controls/containers/PlainScrollArea.h"
#include "documents/AppModel.h"

namespace folvane {

class DropZone;

/// The first page: a welcome, a place to drop files, and the tools.
class HomeView : public PlainScrollArea {
    Q_OBJECT

public:
    explicit HomeView(AppModel& model, QWidget* parent = nullptr);

    /// Gives the keyboard to the first thing to do.
    void takeFocus();

private:
    QWidget* makePage();
    QLayout* makeHeader(QWidget* page) const;
    QWidget* makeTools(QWidget* page);

    AppModel& m_model;
    DropZone* m_zone;
};

} // namespace folvane
