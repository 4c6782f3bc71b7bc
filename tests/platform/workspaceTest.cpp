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

/// What the desktop was asked to show, and by which call: "ShowItems /a/b.pdf".
using Shown = QStringList;

/// The file manager and the portal.
class FakeDesktop : public QDBusVirtualObject {
public:
    FakeDesktop(const QString& failing, Shown& shown) : m_failing(failing), m_shown(shown) {}

    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& call, const QDBusConnection& bus) override
    {
        m_shown.append(call.member() + u' ' + fileIn(call));
        bus.send(m_failing.contains(call.member()) ? call.createErrorReply(QDBusError::Failed, "not today")
                                                   : call.createReply());
        return true;
    }

private:
    static QString fileIn(const QDBusMessage& call)
    {
        if (call.member() == u"ShowItems")
            return QUrl(call.arguments()[0].toStringList().join(u' '), QUrl::StrictMode).toLocalFile();
        const auto file = qvariant_cast<QDBusUnixFileDescriptor>(call.arguments()[1]);
        return QFile::symLinkTarget(QString("/proc/self/fd/%1").arg(file.fileDescriptor()));
    }

    QString m_failing;
    Shown& m_shown;
};

/// Stands for the program that opens folders.
class FolderOpener : public QObject {
    Q_OBJECT

public:
    explicit FolderOpener(Shown& shown) : m_shown(shown)
    {
        QDesktopServices::setUrlHandler("file", this, "open");
    }
    ~FolderOpener() override { QDesktopServices::unsetUrlHandler("file"); }

public slots:
    void open(const QUrl& folder) { m_shown.append("open " + folder.toLocalFile()); }

private:
    Shown& m_shown;
};

/// What a desktop with these services shows when it is asked for the file, in that order.
Shown shownBy(const QStringList& services, const QString& failing, const QString& file)
{
    Shown shown;
    FakeDesktop desktop(failing, shown);
    const FolderOpener opener(shown);
    PrivateBus bus;
    QDBusConnection provider = bus.connection();
    EXPECT_TRUE(provider.registerVirtualObject("/org", &desktop, QDBusConnection::SubPath));
    for (const QString& service : services)
        EXPECT_TRUE(provider.registerService(service));
    await(DesktopWorkspace(bus.connection()).reveal(QUrl::fromLocalFile(file)));
    return shown;
}

} // namespace

TEST(Reveal, AsksTheNextOneOnlyWhenTheFirstCannot)
{
    const QTemporaryDir folder;
    const QString path = QFileInfo(folder.path()).canonicalFilePath(), file = path + "/100% ä #1?.pdf";
    ASSERT_TRUE(QFile(file).open(QIODevice::WriteOnly));
    const QString manager = "org.freedesktop.FileManager1", portal = "org.freedesktop.portal.Desktop";
    const QString first = "ShowItems " + file, second = "OpenDirectory " + file, last = "open " + path;
    EXPECT_EQ(shownBy({manager, portal}, "", file), (Shown{first}));
    EXPECT_EQ(shownBy({portal}, "", file), (Shown{second}));
    EXPECT_EQ(shownBy({manager, portal}, "ShowItems", file), (Shown{first, second}));
    EXPECT_EQ(shownBy({}, "", file), (Shown{last}));
    EXPECT_EQ(shownBy({manager, portal}, "ShowItems OpenDirectory", file), (Shown{first, second, last}));
    EXPECT_EQ(shownBy({portal}, "", file + ".gone"), (Shown{last}));

    Shown shown;
    const FolderOpener opener(shown);
    PrivateBus bus;
    const QDBusConnection broken = bus.connection();
    bus.stop();
    await(DesktopWorkspace(broken).reveal(QUrl::fromLocalFile(file)));
    await(DesktopWorkspace().reveal(QUrl::fromLocalFile(file)));
    EXPECT_EQ(shown, (Shown{last, last}));
}

} // namespace folvane

#include "workspaceTest.moc"
