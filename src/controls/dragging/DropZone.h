#pragma once

#include <QAbstractButton>
#include <QUrl>

namespace folvane {

/// A large place to drop files on, or to click.
class DropZone : public QAbstractButton {
    Q_OBJECT

public:
    explicit DropZone(QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    void filesDropped(QList<QUrl> files);

protected:
    void paintEvent(QPaintEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void setTargeted(bool targeted);

    bool m_targeted = false;
};

} // namespace folvane
