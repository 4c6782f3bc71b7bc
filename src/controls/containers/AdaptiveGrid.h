#pragma once

#include "controls/containers/AdaptiveColumns.h"

#include <QLayout>

#include <memory>
#include <vector>

namespace folvane {

/// Lays widgets out row by row in columns that adapt to its width, each row as high as its highest widget.
class AdaptiveGrid : public QLayout {
    Q_OBJECT

public:
    explicit AdaptiveGrid(const AdaptiveColumns& columns, QWidget* of = nullptr);

    int columns() const { return m_columns.in(contentsRect().width()); }

    void addItem(QLayoutItem* item) override;
    int count() const override { return int(m_items.size()); }
    QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSize() const override { return {m_columns.narrowest, 0}; }
    Qt::Orientations expandingDirections() const override { return Qt::Horizontal; }
    void setGeometry(const QRect& rect) override;

private:
    int rowHeight(size_t first, int columns, int width) const;

    const AdaptiveColumns m_columns;
    std::vector<std::unique_ptr<QLayoutItem>> m_items;
};

} // namespace folvane
