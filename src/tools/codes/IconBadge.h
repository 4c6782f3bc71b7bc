#pragma once

#include "controls/style/icons.h"

#include <QWidget>

namespace folvane {

/// An icon on a square with rounded corners. For the eyes alone: beside it stands what it means.
class IconBadge : public QWidget {
    Q_OBJECT

public:
    explicit IconBadge(Icon icon, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Icon m_icon;
};

} // namespace folvane
