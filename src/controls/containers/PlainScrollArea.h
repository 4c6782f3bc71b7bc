#pragma once

#include <QScrollArea>

namespace folvane {

/// A page that scrolls up and down: without a frame, a ground or a stop of the keyboard of its own.
class PlainScrollArea : public QScrollArea {
    Q_OBJECT

public:
    explicit PlainScrollArea(QWidget* parent = nullptr);

    void setPage(QWidget* page);
};

} // namespace folvane
