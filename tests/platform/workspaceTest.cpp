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

/// The file manager, the portal, and the program that opens folders.
class FakeDesktop : public QDBusVirtualObject {
    Q_OBJECT

public:
    explicit FakeDesktop(const QString& failing = {}) : m_failing(failing)
    {
        QDesktopServices::setUrlHandler("file", this, "open");
    }
    ~FakeDesktop() override { QDesktopServices::unsetUrlHandler("file"); }

    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& call, const QDBusConnection& bus) override
    {
        shown.append(call.member() + u' ' + fileIn(call));
        bus.send(m_failing.contains(call.member()) ? call.createErrorReply(QDBusError::Failed, "not today")
                                                   : call.createReply());
        return true;
    }

    Shown shown; ///< in that order

public slots:
    void open(const QUrl& folder) { shown.append("open " + folder.toLocalFile()); }

private:
    static QString fileIn(const QDBusMessage& call)
    {
        if (call.member() == u"ShowItems")
            return QUrl(call.arguments()[0].toStringList().join(u' '), QUrl::StrictMode).toLocalFile();
        const auto file = qvariant_cast<QDBusUnixFileDescriptor>(call.arguments()[1]);
        return QFile::symLinkTarget(QString("/proc/self/fd/%1").arg(file.fileDescriptor()));
    }

    QString m_failing;
};

/// What a desktop with these services shows when it is asked for the file.
Shown shownBy(const QStringList& services, const QString& failing, const QString& file)
{
    FakeDesktop desktop(failing);
    PrivateBus bus;
    QDBusConnection provider = bus.connection();
    EXPECT_TRUE(provider.registerVirtualObject("/org", &desktop, QDBusConnection::SubPath));
    for (const QString& service : services)
        EXPECT_TRUE(provider.registerService(service));
    await(DesktopWorkspace(bus.connection()).reveal(QUrl::fromLocalFile(file)));
    return desktop.shown;
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

    const FakeDesktop desktop;
    PrivateBus bus;
    const QDBusConnection broken = bus.connection();
    bus.stop();
    await(DesktopWorkspace(broken).reveal(QUrl::fromLocalFile(file)));
    await(DesktopWorkspace().reveal(QUrl::fromLocalFile(file)));
    EXPECT_EQ(desktop.shown, (Shown{last, last}));
}

} // namespace folvane

#include "workspaceTest.moc"
