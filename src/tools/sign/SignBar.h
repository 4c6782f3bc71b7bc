#pragma once

#include "controls/style/icons.h"

#include <QWidget>

class QAbstractButton;
class QKeySequence;

namespace folvane {

class BarTitle;
class ControlGroup;

/// The bar over a page that is being signed.
class SignBar : public QWidget {
    Q_OBJECT

public:
    explicit SignBar(QWidget* parent = nullptr);

    /// The page shown, from 0, of so many.
    void setPlace(int index, int count);

signals:
    void leaveRequested();
    void saveRequested();
    void stepRequested(int pages);
    /// The button that had the keyboard can't be pressed any more.
    void keyboardFreed();

private:
    QWidget* makeStepButtons();
    QAbstractButton* addStep(ControlGroup& group, Icon icon, const QString& name, const QKeySequence& key,
                             int pages);
    void enable(QAbstractButton* button, bool enabled);

    BarTitle* m_title;
    QAbstractButton* m_previous;
    QAbstractButton* m_next;
};

} // namespace folvane
