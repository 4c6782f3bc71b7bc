#pragma once

#include "controls/Watches.h"

#include "documents/AppModel.h"

#include <QWidget>

namespace folvane {

class PageArea;
class PageStrip;
class SignBar;
class StampLibraryPanel;

/// The screen in which stamps are put on the pages of a document: the pages at the left, one of them large in the middle, the stamps at
/// the right. All changes go through the model at once.
class SignView : public QWidget {
    Q_OBJECT

public:
    explicit SignView(AppModel& model, QWidget* parent = nullptr);

    /// Begins with the page that the model names, or the first one. None forgets the page and the selection.
    void setFile(OpenFilePtr file);
    const OpenFilePtr& file() const { return m_file; }
    void takeFocus();
    PageArea& pageArea() const { return *m_area; }

private:
    const PageItem* current() const;
    int currentIndex() const;
    const StampPlacement* selectedStamp() const;
    void connectParts();
    void refresh();
    void showPage(const QUuid& page);
    void go(int pages);
    void select(const std::optional<QUuid>& placement);
    void place(const StampRecord& record);
    void change(const StampPlacement& placement);
    void rotate(double degrees);
    void removeSelected();
    void addToAll();
    void leave();

    AppModel& m_model;
    OpenFilePtr m_file;
    std::optional<QUuid> m_currentID;
    std::optional<QUuid> m_selectedPlacement;
    SignBar* m_bar;
    PageStrip* m_strip;
    PageArea* m_area;
    StampLibraryPanel* m_panel;
    Watches m_watches;
};

} // namespace folvane
