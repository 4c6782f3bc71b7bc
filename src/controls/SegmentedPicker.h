#pragma once

#include <QWidget>

class QButtonGroup;

namespace folvane {

/// One choice of two to four, side by side. The arrow keys move it; Tab reaches the chosen one only. Screen
/// readers see a group of radio buttons.
class SegmentedPicker : public QWidget {
    Q_OBJECT

public:
    /// `name` is what a screen reader calls the question; the first title is chosen.
    SegmentedPicker(const QString& name, const QStringList& titles, QWidget* parent = nullptr);

    int current() const;
    /// Chooses the title at this position, as the user does.
    void setCurrent(int position);

signals:
    void currentChanged(int position);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QButtonGroup* m_segments;
};

} // namespace folvane
