#include "platform/desktop/Workspace.h"

#include "support/PrivateBus.h"
#include "support/await.h"

#include <QDBusMessage>
#include <QDBusUnixFileDescriptor>
#include <QDBusVirtualObject>
#include <QDesktopServices>
#include <QFileInfo>

#include <gtest/gtest.h>

namespace folvane {
namespace {

enum class Manner { Missing, Works, Fails };

/// What the desktop was asked to show, and who was asked: "ShowItems /a/b.pdf".
using Shown = QStringList;

/// One of the interfaces of the desktop that can show a file: the file manager's or the portal's.
class FakeDesktop : public QDBusVirtualObject {
public:
    FakeDesktop(Manner manner, Shown& shown) : m_manner(manner), m_shown(shown) {}

    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& call, const QDBusConnection& bus) override
    {
        m_shown.append(call.member() + u' ' + fileIn(call.arguments()));
        bus.send(m_manner == Manner::Fails ? call.createErrorReply(QDBusError::Failed, "not today")
                                           : call.createReply());
        return true;
    }

private:
    static QString fileIn(const QVariantList& arguments)
    {
        if (const QStringList uris = arguments[0].toStringList(); !uris.isEmpty() && !uris[0].isEmpty())
            return QUrl(uris.join(u' '), QUrl::StrictMode).toLocalFile();
        const auto file = qvariant_cast<QDBusUnixFileDescriptor>(arguments[1]);
        return QFile::symLinkTarget(QStringLiteral("/proc/self/fd/%1").arg(file.fileDescriptor()));
    }

    Manner m_manner;
    Shown& m_shown;
};

/// Stands for the program that opens folders.
class FolderOpener : public QObject {
    Q_OBJECT

public:
    explicit FolderOpener(Shown& shown) : m_shown(shown)
    {
        QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "open");
    }
    ~FolderOpener() override { QDesktopServices::unsetUrlHandler(QStringLiteral("file")); }

public slots:
    void open(const QUrl& folder) { m_shown.append(QStringLiteral("opened ") + folder.toLocalFile()); }

private:
    Shown& m_shown;
};

class Reveal : public testing::Test {
protected:
    /// Nothing where it is missing.
    void provide(QDBusConnection& provider, Manner manner, FakeDesktop& desktop, const QString& at,
                 const QString& service)
    {
        if (manner == Manner::Missing)
            return;
        ASSERT_TRUE(provider.registerVirtualObject(at, &desktop));
        ASSERT_TRUE(provider.registerService(service));
    }

    /// What a desktop with these two shows when it is asked for the file, in that order.
    Shown shown(Manner ofManager, Manner ofPortal, const QString& shownFile)
    {
        Shown shown;
        FakeDesktop manager(ofManager, shown), portal(ofPortal, shown);
        FolderOpener opener(shown);
        PrivateBus bus;
        QDBusConnection provider = bus.connection();
        provide(provider, ofManager, manager, "/org/freedesktop/FileManager1",
                "org.freedesktop.FileManager1");
        provide(provider, ofPortal, portal, "/org/freedesktop/portal/desktop",
                "org.freedesktop.portal.Desktop");
        await(DesktopWorkspace(bus.connection()).reveal(QUrl::fromLocalFile(shownFile)));
        return shown;
    }

    QTemporaryDir folder;
    QString path = QFileInfo(folder.path()).canonicalFilePath(), file = path + "/100% ä #1?.pdf";
};

TEST_F(Reveal, AsksTheNextOneOnlyWhenTheFirstCannot)
{
    using enum Manner;
    ASSERT_TRUE(QFile(file).open(QIODevice::WriteOnly));
    const QString manager = "ShowItems " + file, portal = "OpenDirectory " + file, opened = "opened " + path;
    EXPECT_EQ(shown(Works, Works, file), (Shown{manager}));
    EXPECT_EQ(shown(Missing, Works, file), (Shown{portal}));
    EXPECT_EQ(shown(Fails, Works, file), (Shown{manager, portal}));
    EXPECT_EQ(shown(Missing, Missing, file), (Shown{opened}));
    EXPECT_EQ(shown(Fails, Fails, file), (Shown{manager, portal, opened}));
    EXPECT_EQ(shown(Missing, Works, file + ".gone"), (Shown{opened}));
}

TEST_F(Reveal, OpensTheFolderWithoutABusThatWorks)
{
    Shown shown;
    FolderOpener opener(shown);
    await(DesktopWorkspace().reveal(QUrl::fromLocalFile(file)));
    PrivateBus bus;
    const QDBusConnection broken = bus.connection();
    bus.stop();
    await(DesktopWorkspace(broken).reveal(QUrl::fromLocalFile(file)));
    EXPECT_EQ(shown, (Shown{"opened " + path, "opened " + path}));
}

} // namespace
} // namespace folvane

#include "workspaceTest.moc"
