#pragma once

#include "viewParts/PageListModel.h"
#include "viewParts/PictureList.h"

class QVariantAnimation;

namespace folvane {

/// The pages of a document under each other, one of which is the current one. A click or the arrow keys choose another.
class PageStrip : public PictureList {
    Q_OBJECT

public:
    static constexpr int stripWidth = 150;

    explicit PageStrip(AppModel& model, QWidget* parent = nullptr);

    void setPages(const std::vector<PageItem>& pages);
    /// Scrolls to the page, unless it is the current one already.
    void setCurrentPage(const std::optional<QUuid>& page);

signals:
    void chosen(QUuid page);

protected:
    QList<PagePictures::Key> keysOnScreen() const override;
    void carry(int) override {} // order is not changed here

    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent*) override {} // a pull across the pages chooses none
    void mouseDoubleClickEvent(QMouseEvent* event) override { mousePressEvent(event); }
    void keyPressEvent(QKeyEvent* event) override;

private:
    std::pair<int, int> rowsOnScreen() const;
    QRect rectOf(int row) const;
    void drawPage(QPainter& painter, int row) const;
    void choose(int row);
    void glideTo(int offset);

    PageListModel m_pages;
    QVariantAnimation* m_gliding;
};

} // namespace folvane
