#pragma once

#include <QFrame>
#include <QImage>

namespace folvane {

/// The logo in a square with rounded corners and a coloured shadow, in proportion to `size`. A layout places it by
/// the square (see visualMargin.h). Screen readers pass over it.
class BrandMark : public QFrame {
    Q_OBJECT

public:
    explicit BrandMark(int size, QWidget* parent = nullptr);

    int size() const { return m_size; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const QImage& picture(int pixels);

    int m_size;
    QImage m_picture; // as large as it was last shown
};

} // namespace folvane
