#pragma once

#include "controls/containers/PlainScrollArea.h"
#include "documents/AppModel.h"

class QVBoxLayout;

namespace folvane {

class UpdatePanel;

/// The page about the program: its version and newer ones, support, and links to its maker.
class AboutView : public PlainScrollArea {
    Q_OBJECT

public:
    explicit AboutView(AppModel& model, QWidget* parent = nullptr);

    /// Gives the keyboard to the first thing to do.
    void takeFocus();

private:
    QWidget* makePage();
    QWidget* makeHead(QWidget* page) const;
    QWidget* makeSupport(QWidget* page);
    QWidget* makeFriend(QWidget* page);
    void addLinks(QVBoxLayout& column, QWidget* page);

    AppModel& m_model;
    UpdatePanel* m_updates;
};

} // namespace folvane
