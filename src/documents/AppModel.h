#pragma once

#include "documents/CodesModel.h"
#include "documents/JobRunner.h"
#include "documents/MergeModel.h"
#include "documents/OpenFile.h"
#include "documents/PasswordQuestions.h"
#include "documents/Services.h"
#include "documents/Sources.h"
#include "documents/Toaster.h"
#include "documents/fileNames.h"
#include "engine/Thumbnails.h"
#include "platform/desktop/Panels.h"
#include "records/BuildPlan.h"
#include "records/Destination.h"
#include "records/FileSheet.h"
#include "records/QuitQuestion.h"
#include "records/SupportPrompt.h"
#include "stamps/StampLibrary.h"
#include "stamps/StampPictures.h"
#include "updates/Updates.h"

#include <QObject>

namespace folvane {

/// The state of the whole program and every action on it: one instance, on the interface thread. Views read
/// the observed fields and call the operations; sheets, alerts, the toast and the overlay show because a
/// field is set.
class AppModel : public QObject {
    Q_OBJECT

public:
    using Action = std::function<void()>;
    using MakeFile = std::function<QCoro::Task<QByteArray>(int index, std::stop_token)>;

    explicit AppModel(Services services, QObject* parent = nullptr);
    ~AppModel() override;

    QProperty<std::optional<Destination>> destination{Destination()};
    QProperty<QList<OpenFilePtr>> files; ///< oldest first
    QProperty<std::optional<FileSheet>> sheet;
    QProperty<std::optional<Toast>> toast;
    QProperty<std::optional<QString>> errorMessage;
    QProperty<std::optional<BusyState>> busy; ///< while set, no other job starts
    QProperty<std::optional<QUuid>>
        signingFileID; ///< the document that shows its page for signing, instead of its grid
    QProperty<std::optional<QUuid>>
        signingStartPage;               ///< the page that it then begins with; none is the first
    QProperty<OpenFilePtr> closingFile; ///< the document about which the save question is up
    QProperty<std::optional<PasswordRequest>> passwordRequest;
    QProperty<std::optional<SupportPrompt>> support; ///< the request to the user that is up
    StampLibrary stamps{StampLibrary::usersFolder()};
    StampPictures stampPictures{stamps};
    MergeModel merge; ///< lasts as long as the program, wherever the user goes
    CodesModel codes;
    Updates updates;

    OpenFilePtr file(const QUuid& id) const;

    // opening.cpp
    QCoro::Task<> open(QList<QUrl> urls, std::optional<Tool> tool = std::nullopt);
    /// None means Cancel. Without a question it does nothing.
    void answerPassword(std::optional<QString> password) { m_questions.answer(password); }
    QCoro::Task<QList<QUrl>> chooseFiles(bool multiple, QList<ContentType> types);
    /// The Open… command: asks for files and opens them.
    QCoro::Task<> chooseAndOpen();

    // pageEditing.cpp
    /// Returns at once; the change lands in a task.
    void turn(OpenFilePtr file, QSet<QUuid> pages, bool clockwise);
    void deletePages(OpenFilePtr file, const QSet<QUuid>& pages);
    /// Moves the group in front of `before`, or to the end.
    void move(OpenFilePtr file, const QSet<QUuid>& pages, std::optional<QUuid> before);
    /// A drop of page ids (text) on the cell of `before`: reorders as a drag does. False: it is no page id.
    bool dropPages(OpenFilePtr file, const QStringList& items, std::optional<QUuid> before);
    QCoro::Task<> insertPages(OpenFilePtr file, QList<QUrl> urls);

    // placing.cpp
    /// Shows the document for signing, at this page or its first one.
    void startSigning(const OpenFile& file, std::optional<QUuid> page = std::nullopt);

    // Pages and placements that are not there change nothing
    /// In the middle of the lower half, each next one a little beside the one before it.
    std::optional<StampPlacement> place(const StampRecord& record, OpenFilePtr file, const QUuid& page);
    void update(const StampPlacement& placement, OpenFilePtr file, const QUuid& page);
    void remove(const QUuid& placement, OpenFilePtr file, const QUuid& page);
    /// Puts a copy of it on every other page of the document.
    void addToAllPages(const StampPlacement& placement, OpenFilePtr file, const QUuid& page);
    /// From the pages of all open documents, then from the library.
    void deleteStamp(QUuid stamp);

    // merging.cpp
    /// Adds the files one after the other. What is neither a PDF nor a picture is left out without a word.
    QCoro::Task<> addToMerge(QList<QUrl> urls);
    /// Asks for a place and writes all rows there as one PDF without a password. Fewer than two rows do nothing.
    QCoro::Task<> mergeFiles();

    // readingCodes.cpp: until a read has ended. Each stops the one before it
    /// What is neither a PDF nor a picture, or cannot be read, is left out.
    QCoro::Task<> readCodes(QList<QUrl> urls);
    /// From copied files, or a picture.
    QCoro::Task<> readCodesFromClipboard();

    // saving.cpp
    QCoro::Task<std::optional<QUrl>> chooseSaveURL(QString name, std::optional<QUrl> near);
    void run(QString title, Job work) { m_jobs.run(title, work); }
    void write(BuildPlan plan, QUrl url, QString title, Action onSaved = [] {});
    QCoro::Task<> save(QByteArray data, QString name, std::optional<QUrl> near);
    QCoro::Task<> saveAs(OpenFilePtr file);
    QCoro::Task<> extract(OpenFilePtr file);
    QCoro::Task<> writeFiles(QList<FileName> items, std::optional<QUrl> near, QString prompt, QString title,
                             MakeFile make);
    void showToast(QString text, std::optional<QUrl> reveal = std::nullopt) { m_toaster.show(text, reveal); }

    /// A write to `url` would destroy a source that open work depends on (links followed, also hard ones).
    bool isInUse(const QUrl& url) const { return m_sources->isInUse(url); }
    /// While somebody has the result, the files that these pages point at stay open: for a job of several builds, whose
    /// document may be closed meanwhile.
    Sources::Hold keepSources(const std::vector<PageItem>& pages);

    // closing.cpp
    /// Closes at once, or asks first (`closingFile`) when the document is edited.
    void requestClose(OpenFilePtr file);
    void close(OpenFilePtr file);
    std::optional<QuitQuestion> quitQuestion() const;
    bool quitsWithLastWindow() const;

    // supportOffers.cpp
    /// The user has told a friend, and is not asked again.
    void answerFriend();

    PDFEngine& engine() const { return m_services.engine; }
    Thumbnails& thumbnails() { return m_thumbnails; }
    const Services& services() const { return m_services; }

signals:
    /// A file has been written whole.
    void fileWritten(QUrl url);

private:
    enum class BadPictures { Tell, LeaveOut };

    QSet<QUrl> sourcesOfPages() const;
    void followMerge();

    // opening.cpp
    QCoro::Task<std::vector<PageItem>> load(QUrl url, BadPictures bad);
    QCoro::Task<std::vector<PageItem>> loadAll(QList<QUrl> urls, BadPictures bad);
    QCoro::Task<OpenFilePtr> openPdf(QUrl url);
    QCoro::Task<OpenFilePtr> openPictures(QList<QUrl> urls);

    // readingCodes.cpp
    QCoro::Task<> runReading(Job reading);
    QCoro::Task<> readFiles(QList<QUrl> urls, std::stop_token stop);
    QCoro::Task<> readPicture(QImage picture, std::stop_token stop);
    void finishReading(const QList<FoundCode>& found, const QString& emptyMessage);

    // saving.cpp, writingFiles.cpp
    bool refuseInUse(const QUrl& url);
    QCoro::Task<> buildAndWrite(BuildPlan plan, QUrl url, Action onSaved, std::stop_token stop);
    QCoro::Task<> writeOne(QByteArray data, QUrl url, Action onSaved, std::stop_token stop);
    QCoro::Task<> makeAndWrite(QList<FileName> items, QUrl folder, MakeFile make, std::stop_token stop);
    void saved(QList<QUrl> urls);

    // supportOffers.cpp
    void countSavedFiles(qsizetype count);
    void offerSupportOnce();
    void offerFriendIfDue();
    QCoro::Task<> offer(SupportPrompt prompt);
    bool asksTheUser() const;

    Services m_services;
    Thumbnails m_thumbnails;
    std::stop_source m_end; ///< stopped first: a coroutine that goes on afterwards must not touch the model
    bool m_offeredSupport = false; ///< in this run
    QSet<QUrl> m_mergeSources;     ///< of the rows to merge, when they last changed
    const std::shared_ptr<Sources> m_sources;
    // What follows ends coroutines when it goes, and they let go of their sources.
    PasswordQuestions m_questions{passwordRequest, *m_sources};
    Toaster m_toaster{toast, m_services.clock};
    JobRunner m_jobs{{busy, errorMessage}};
    QPropertyNotifier m_onMerge;
};

} // namespace folvane
