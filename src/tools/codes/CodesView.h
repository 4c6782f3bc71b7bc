#pragma once

#include "controls/Watches.h"
#include "documents/AppModel.h"

#include <QWidget>

namespace folvane {

class CodesDropZone;
class FileDrops;
class LazyColumn;
class NoteBanner;

/// The screen that reads codes: where files and pictures come in, and a card for each code that was found.
class CodesView : public QWidget {
    Q_OBJECT

public:
    explicit CodesView(AppModel& model, QWidget* parent = nullptr);

    /// Gives the keyboard to the first thing to do.
    void takeFocus();

private:
    QWidget* makeHeader();
    QWidget* makeProgress(QWidget* parent);
    QWidget* makeFoundRow(QWidget* parent);
    QWidget* makeCard(const QUuid& code);
    void showReading();
    void showEmptyMessage();
    void showFound();

    AppModel& m_model;
    FileDrops* m_drops;
    LazyColumn* m_cards;
    CodesDropZone* m_zone;
    QWidget* m_progress;
    NoteBanner* m_empty;
    QWidget* m_foundRow;
    qsizetype m_shown = 0; ///< how many cards
    Watches m_watches;
};

} // namespace folvane
