#pragma once

#include "documents/AppModel.h"
#include "stamps/ReadyStamp.h"
#include "tools/readyStamps/readyStampRecord.h"

#include <QHash>
#include <QPixmap>
#include <QWidget>

#include <map>

class QLineEdit;

namespace folvane {

class CheckBox;
class ReadyStampTile;
class SegmentedPicker;

/// The words that stand ready as stamps, and a field for one's own. Ink and date are kept for the next time.
class ReadyStampsPicker : public QWidget {
    Q_OBJECT

public:
    /// The model must outlive it. `width` is the room that it has.
    ReadyStampsPicker(AppModel& model, int width, QWidget* parent = nullptr);
    ~ReadyStampsPicker() override;

    /// Whether all stamps show as they are chosen now.
    bool isComplete() const;

signals:
    /// A stamp of the library.
    void chosen(folvane::StampRecord record);

private:
    QLayout* makeSettings();
    QLayout* makeTiles();
    QLayout* makeOwnWord();

    QString dateBelowWords() const;
    ReadyStampText textOf(ReadyStamp stamp) const;
    QUuid identity(ReadyStamp stamp) const;
    void keepSettings();
    void refresh();
    void showPreviews();
    QCoro::Task<> addPreviews(QList<ReadyStampText> texts, StampInk ink, std::stop_token stop);
    void addOwnWord();
    void choose(const ReadyStampText& text);
    QCoro::Task<> tellChoice(ReadyStampText text, std::stop_token stop);

    AppModel& m_model;
    const int m_width;
    ReadyStampSettings m_settings;
    SegmentedPicker* m_ink;
    CheckBox* m_addDate;
    std::map<ReadyStamp, ReadyStampTile*> m_tiles;
    QLineEdit* m_ownWord;
    QHash<QUuid, QPixmap> m_previews; ///< by the identity of the stamp
    std::stop_source m_previewing;
    std::stop_source m_choosing;
};

} // namespace folvane
