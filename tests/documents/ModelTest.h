#pragma once

#include "documents/AppModel.h"
#include "engine/PDFEngine.h"
#include "support/ManualClock.h"
#include "support/MemoryPreferences.h"
#include "support/ScriptedPanels.h"
#include "support/ScriptedWorkspace.h"
#include "support/TestFolder.h"
#include "support/await.h"

#include <QHash>

#include <gtest/gtest.h>

namespace folvane {

/// The real model on the real engine, with scripted panels, in a folder of its own.
class ModelTest : public testing::Test, public TestFolder {
protected:
    ModelTest();

    /// A PDF whose page n bears the text "name-n" ("name" without its ending); 600 by 800 points.
    QUrl putPdf(const QString& name, int pages) const;
    QUrl putLockedPdf(const QString& name, int pages, const QString& password) const;
    QUrl putPicture(const QString& name) const;

    /// Opens and gives the document that is then shown.
    OpenFilePtr open(const QList<QUrl>& urls);
    OpenFilePtr shown() const;
    /// The answers that password questions get from now on, by file name, then Cancel. What was asked is in
    /// `questions`, with "!" behind the name where the answer before was wrong.
    void answerPasswords(const QHash<QString, QStringList>& answers);
    /// Runs an operation that asks for a place, gives it this one, and waits for the job.
    void saveTo(const QString& name, const std::function<QCoro::Task<>()>& operation);
    void saveAs(const OpenFilePtr& file, const QString& name);

    /// Runs the event loop until it holds.
    void runUntil(const std::function<bool()>& holds) const;
    void runUntilIdle() const;
    /// All that the engine was asked until now is done, and who waited for it has gone on.
    void drainEngine();
    bool isHeld(const QUrl& lockedPdf);
    QString error() const { return model->errorMessage.value().value_or(QString()); }
    int savedFiles() const { return preferences.value("friend.savedFiles", 0).toInt(); }

    PDFEngine engine;
    ScriptedPanels panels;
    MemoryPreferences preferences;
    ScriptedWorkspace workspace;
    ManualClock clock;
    QStringList questions;
    std::unique_ptr<AppModel> model;

private:
    QHash<QString, QStringList> m_passwords;
    QPropertyNotifier m_onQuestion;
};

const QString inUse =
    QStringLiteral("“%1” is open in Folvane, so it can't be replaced. Save under another name.");
const QString damaged = QStringLiteral("“%1” can't be opened. It may be damaged or not a PDF.");

/// What another program sees in a file: the texts of the pages in one piece, such as "a-1 a-2".
QString textsIn(const QString& pdf, const QString& password = {});

/// Document pages, as "a-1 a-2", by the source's name and the 1-based page in it.
QString order(const OpenFile& file);
/// Ids of the pages at 1-based positions.
QSet<QUuid> at(const OpenFile& file, const QList<int>& positions);

} // namespace folvane
