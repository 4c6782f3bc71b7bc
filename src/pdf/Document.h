#pragma once

#include "pdf/structure/PageGeometry.h"
#include "platform/files/SourceFile.h"

#include <QByteArray>
#include <QImage>
#include <QSize>
#include <QString>

#include <memory>
#include <optional>
#include <stop_token>

namespace folvane::pdf {

class DrawingBudget;
struct DocumentData;
struct Opening;

/// A PDF held open for reading, or a picture as a document of one page. For one thread at a time. Nothing changes in it.
class Document {
public:
    explicit Document(std::unique_ptr<DocumentData> data);
    ~Document();

    /// Opens a file, repairing what is damaged. Never throws: one whose opening is stopped is unreadable.
    static Opening open(std::shared_ptr<const SourceFile> file, const std::optional<QString>& password,
                        std::stop_token stop = {});

    /// A PDF in memory that needs no password; null when it cannot be read.
    static std::unique_ptr<Document> fromBytes(const QByteArray& bytes);

    int pageCount() const;
    /// Nothing when there is no such page.
    std::optional<PageGeometry> geometry(int index) const;
    /// The page's own rotation in degrees; nothing when there is no such page.
    std::optional<int> rotation(int index) const;
    /// The file behind it is as it was when it was opened.
    bool isIntact() const;
    /// See SourceFile::failedReads(); none of a document in memory.
    quint64 failedReads() const;
    /// The page's crop box on opaque white in exactly `pixels`, turned by `turn` degrees on top of its own rotation;
    /// null when the file cannot be read, or the page not be drawn within the budget. The latter is remembered, and
    /// answered at once when a budget of no more time is offered for the page again.
    QImage draw(int index, QSize pixels, int turn, DrawingBudget& budget);
    /// With the budget of a picture.
    QImage draw(int index, QSize pixels, int turn, std::stop_token stop);
    /// Gives back the memory that drawing keeps.
    void releaseDrawing();
    /// Pages that could not be drawn in time are tried again.
    void forgetFailedDrawings();

    DocumentData& data() const { return *m_data; }

private:
    QImage drawAsItStands(int index, QSize pixels, int turn, DrawingBudget& budget);

    std::unique_ptr<DocumentData> m_data;
};

/// How an opening ended.
struct Opening {
    enum class Outcome { Opened, Locked, Unreadable };

    Outcome outcome = Outcome::Unreadable;
    std::unique_ptr<Document> document; ///< only when opened
};

} // namespace folvane::pdf
