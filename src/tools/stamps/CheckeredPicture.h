#pragma once

#include <QPixmap>
#include <QWidget>

namespace folvane {

/// A picture, as large as fits, on a checkerboard with a rounded outline.
class CheckeredPicture : public QWidget {
    Q_OBJECT

public:
    static constexpr double cornerRadius = 10;

    /// `padding` is what stays free around the picture.
    explicit CheckeredPicture(int padding, QWidget* parent = nullptr);

    /// A null picture leaves the checkerboard bare.
    void setPicture(const QImage& picture);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const QPixmap& shown();

    const int m_padding;
    QImage m_picture;
    QPixmap m_shown; // as large as it was last painted
};

} // namespace folvane
