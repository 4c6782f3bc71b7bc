#pragma once

#include "documents/AppModel.h"

#include <QWidget>

namespace folvane {

/// What the window shows while no document is: a place to drop files, and a way to choose them.
class HomeView : public QWidget {
    Q_OBJECT

public:
    explicit HomeView(AppModel& model, QWidget* parent = nullptr);
};

} // namespace folvane
