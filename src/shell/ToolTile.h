#pragma once

#include "controls/icons.h"

#include <QAbstractButton>

namespace folvane {

/// One tool on the home page: a button with an icon, a title, and a sentence that wraps. Its shadow lies in a margin
/// around what it seems to be.
class ToolTile : public QAbstractButton {
    Q_OBJECT

public:
    ToolTile(Icon icon, const QString& title, const QString& detail, QWidget* parent = nullptr);

    static QMargins margin();
    /// Both without the margin.
    int frameHeight(int frameWidth) const;
    QRect frame() const { return rect().marginsRemoved(margin()); }

protected:
    void paintEvent(QPaintEvent* event) override;
    bool hitButton(const QPoint& place) const override { return frame().contains(place); }

private:
    Icon m_icon;
    QString m_detail;
};

} // namespace folvane
