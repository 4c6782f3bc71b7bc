#pragma once

#include "controls/Watches.h"
#include "controls/containers/PlainScrollArea.h"

#include "documents/AppModel.h"

class QVBoxLayout;

namespace folvane {

class FileRow;

/// The open documents, a row each, as high as they need and no higher than there is room: then they scroll. The Tab key
/// stops once, at the document that is shown or else at the first; the arrow keys, Home and End go on from there.
class FileList : public PlainScrollArea {
    Q_OBJECT

public:
    explicit FileList(AppModel& model, QWidget* parent = nullptr);

    /// What the Tab key reaches before this list.
    void setTabPredecessor(QWidget* before);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    /// The person wants to go to the document that is shown now.
    void chosen();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showFiles();
    void markCurrent();
    FileRow* addRow(const OpenFilePtr& file);
    FileRow* currentRow() const;
    void stopTabAt(FileRow* row);
    bool walk(FileRow& from, int key);

    AppModel& m_model;
    QVBoxLayout* m_column;
    QWidget* m_before = nullptr;
    QList<FileRow*> m_rows;
    Watches m_watches;
};

} // namespace folvane
