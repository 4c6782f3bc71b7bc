#pragma once

#include "records/StampRecord.h"
#include "stamps/StampMaker.h"

#include <QCoreApplication>
#include <QHash>
#include <QImage>
#include <QList>
#include <QProperty>

#include <optional>

namespace folvane {

/// The user's signatures and stamps: a PNG for each in one folder, and an index beside them. The only one who writes
/// there; on the interface thread. Pages name a stamp by its id and never hold a copy.
class StampLibrary {
    Q_DECLARE_TR_FUNCTIONS(folvane::StampLibrary)

public:
    /// Loads what is in the folder, which need not exist. An index that cannot be read counts as none, and stays until
    /// the next change; stamps whose picture has gone are left out.
    explicit StampLibrary(QString folder);
    Q_DISABLE_COPY_MOVE(StampLibrary)

    /// In the user's own data: "Folvane/Stamps".
    static QString usersFolder();

    QProperty<QList<StampRecord>> stamps;           ///< oldest first
    QProperty<QHash<QUuid, QImage>> images;         ///< decoded; without those that cannot be
    QProperty<std::optional<QString>> errorMessage; ///< the last change that failed, in words for the user

    const QString& folder() const { return m_folder; }

    /// The stored record: the one that has this id already, where there is one. Nothing on failure. A name of blanks becomes
    /// the suggested one.
    std::optional<StampRecord> add(const StampMaker::Stamp& stamp, const QString& name,
                                   const QUuid& id = QUuid::createUuid());
    // Ids come by value: callers have them from the very list that changes.
    /// A name of blanks changes nothing.
    void rename(QUuid id, const QString& newName);
    /// Leaves pages as they are: AppModel::deleteStamp() takes it off them first.
    void remove(QUuid id);

    std::optional<StampRecord> record(const QUuid& id) const;
    /// Where each picture lies. Does not look at the disk.
    QHash<QUuid, QUrl> files() const;
    /// "Signature" for a wide picture, else "Stamp", with a number when that name is taken.
    QString suggestedName(const StampMaker::Stamp& stamp) const;

private:
    void load();
    bool write(const QList<StampRecord>& records) const;
    bool store(const StampMaker::Stamp& stamp, const StampRecord& record) const;
    bool change(const QList<StampRecord>& records);
    QString pathOf(const QUuid& id) const;

    const QString m_folder;
};

} // namespace folvane
