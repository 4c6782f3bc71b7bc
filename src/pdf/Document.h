#pragma once

#include "pdf/structure/PageGeometry.h"
#include "platform/files/SourceFile.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <optional>
#include <stop_token>

namespace folvane::pdf {

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

private:
    // They look into what the library holds of it.
    friend class Assembly;
    friend class PageDrawer;

    DocumentData& data() const { return *m_data; }

    std::unique_ptr<DocumentData> m_data;
};

/// How an opening ended.
struct Opening {
    enum class Outcome { Opened, Locked, Unreadable };

    Outcome outcome = Outcome::Unreadable;
    std::unique_ptr<Document> document; ///< only when opened
};

} // namespace folvane::pdf
