#include "platform/desktop/Workspace.h"

#include "FakeDesktop.h"

#include "support/PrivateBus.h"
#include "support/await.h"

#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <optional>

namespace folvane {
namespace {

class Reveal : public testing::Test {
protected:
    void provide(Manner manner, Desktop& object, const QString& service, const QString& path)
    {
        object.manner = manner;
        if (manner == Manner::Missing)
            return;
        QDBusConnection provider = bus.connection();
        ASSERT_TRUE(provider.registerObject(path, &object, QDBusConnection::ExportAllSlots));
        ASSERT_TRUE(provider.registerService(service));
    }
    void provide(Manner ofManager, Manner ofPortal)
    {
        provide(ofManager, fileManager, QStringLiteral("org.freedesktop.FileManager1"),
                QStringLiteral("/org/freedesktop/FileManager1"));
        provide(ofPortal, portal, QStringLiteral("org.freedesktop.portal.Desktop"),
                QStringLiteral("/org/freedesktop/portal/desktop"));
    }
    QString makeFile(const QString& name)
    {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        return QFileInfo(file).canonicalFilePath();
    }

    PrivateBus bus;
    FileManager fileManager;
    Portal portal;
    FolderOpener opener;
    QTemporaryDir folder;
};

struct RevealCase {
    const char* name;
    Manner manager;
    Manner portal;
    const char* asked; ///< who is asked, in this order
};

class RevealRows : public Reveal, public testing::WithParamInterface<RevealCase> {};

TEST_P(RevealRows, AsksTheNextOneOnlyWhenTheFirstCannot)
{
    provide(GetParam().manager, GetParam().portal);
    const QString file = makeFile(QStringLiteral("100% ä #1?.pdf"));
    DesktopWorkspace workspace(bus.connection());

    await(workspace.reveal(QUrl::fromLocalFile(file)));

    QStringList asked;
    for (const QString& uri : fileManager.shown) {
        EXPECT_EQ(QUrl(uri, QUrl::StrictMode).toLocalFile(), file);
        asked.append(QStringLiteral("manager"));
    }
    for (const QString& path : portal.shown) {
        EXPECT_EQ(path, file);
        asked.append(QStringLiteral("portal"));
    }
    for (const QString& path : opener.shown) {
        EXPECT_EQ(path, QFileInfo(file).path());
        asked.append(QStringLiteral("folder"));
    }
    EXPECT_EQ(asked.join(QLatin1Char(' ')), QLatin1String(GetParam().asked));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, RevealRows,
    testing::Values(RevealCase{"ManagerSuffices", Manner::Works, Manner::Works, "manager"},
                    RevealCase{"NoManager", Manner::Missing, Manner::Works, "portal"},
                    RevealCase{"ManagerFails", Manner::Fails, Manner::Works, "manager portal"},
                    RevealCase{"NoPortalEither", Manner::Missing, Manner::Missing, "folder"},
                    RevealCase{"BothFail", Manner::Fails, Manner::Fails, "manager portal folder"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(Reveal, OpensTheFolderOfAFileThatIsGone)
{
    provide(Manner::Missing, Manner::Works);
    DesktopWorkspace workspace(bus.connection());
    await(workspace.reveal(QUrl::fromLocalFile(folder.filePath(QStringLiteral("gone.pdf")))));
    EXPECT_TRUE(portal.shown.isEmpty());
    EXPECT_EQ(opener.shown, QStringList{folder.path()});
}

TEST_F(Reveal, OpensTheFolderWithoutABusThatWorks)
{
    const QUrl file = QUrl::fromLocalFile(folder.filePath(QStringLiteral("a.pdf")));
    await(DesktopWorkspace().reveal(file));
    const QDBusConnection broken = bus.connection();
    bus.stop();
    await(DesktopWorkspace(broken).reveal(file));
    EXPECT_EQ(opener.shown, (QStringList{folder.path(), folder.path()}));
}

} // namespace
} // namespace folvane
