#pragma once

#include <QFrame>

class QVBoxLayout;

namespace folvane {

/// A card: content on a white ground with rounded corners, over a soft shadow. Layouts place it by its frame.
class Panel : public QFrame {
    Q_OBJECT

public:
    explicit Panel(int padding, QWidget* parent = nullptr);

    /// What lies around the frame: the shadow, and the ring of the keyboard.
    static QMargins margin();
    QVBoxLayout& content() { return *m_content; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QVBoxLayout* m_content;
};

} // namespace folvane
