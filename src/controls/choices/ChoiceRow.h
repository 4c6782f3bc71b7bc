#pragma once

#include "controls/PaintedButton.h"

#include <QRadioButton>

namespace folvane {

class Spinner;

/// One of several choices under each other: a circle, a title over a detail, and at the right what the choice comes to,
/// once that is known. All of it can be clicked. Put the rows of one question into one QButtonGroup.
class ChoiceRow : public Painted<QRadioButton> {
    Q_OBJECT

public:
    ChoiceRow(const QString& title, const QString& detail, QWidget* parent = nullptr);

    void setTitle(const QString& title);
    /// The value at the right; an empty one shows nothing.
    void setValue(const QString& value);
    /// Shows a spinner for the value until the next one comes.
    void setWaiting();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }
    /// Where the title begins, from the left edge.
    static int textLeft();

protected:
    bool hitButton(const QPoint& place) const override { return rect().contains(place); }
    void draw(QPainter& painter, const ControlState& state) const override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void showValue(const QString& value, bool waiting);
    void refreshName();
    QRect words() const;
    void drawGround(QPainter& painter, const ControlState& state) const;
    void drawWords(QPainter& painter) const;

    const QString m_detail;
    QString m_value;
    Spinner* m_spinner;
};

} // namespace folvane
