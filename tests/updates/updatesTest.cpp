// Asking a real server of this machine, with a certificate that was made for it.

#include "updates/Updates.h"
#include "platform/tasks/Cancelled.h"

#include "support/TestFolder.h"
#include "support/await.h"

#include <QDir>
#include <QProcess>
#include <QTest>
#include <gtest/gtest.h>

namespace folvane {

using namespace std::chrono_literals;
using UpdateChecker::Failed;
using UpdateChecker::Result;

namespace {

/// The script beside this file, which tells what it does.
class VersionServer {
public:
    VersionServer()
    {
        for (const char* name : {"https_proxy", "HTTPS_PROXY", "all_proxy", "ALL_PROXY"})
            qunsetenv(name);
        m_process.start("python3", {"-B", FOLVANE_VERSION_SERVER, m_folder.path({})});
        while (!m_process.canReadLine())
            if (!m_process.waitForReadyRead(60'000))
                throw std::runtime_error("no server: " + m_process.readAllStandardError().toStdString());
        const QList<QByteArray> ports = m_process.readLine().simplified().split(' ');
        secure = ports.at(0).toInt(), silent = ports.at(2).toInt();
    }
    ~VersionServer()
    {
        m_process.closeWriteChannel();
        m_process.waitForFinished();
    }
    Q_DISABLE_COPY_MOVE(VersionServer)

    QSslConfiguration trusting(const QString& name) const
    {
        QSslConfiguration tls = QSslConfiguration::defaultConfiguration();
        tls.setCaCertificates({QSslCertificate(m_folder.get(name))});
        return tls;
    }
    UpdateSource file(const QString& name) const
    {
        const QUrl url(QString("https://localhost:%1/%2").arg(secure).arg(name));
        return {{}, url, 6, 5s, trusting("root.pem")};
    }

    const TestFolder& folder() const { return m_folder; }

    int secure = 0, silent = 0;

private:
    TestFolder m_folder;
    QProcess m_process;
};

const VersionServer& server()
{
    static const VersionServer only;
    return only;
}

// How it is asked
using How = std::function<UpdateSource(UpdateSource)>;

How builtAs(qint64 build)
{
    return [build](UpdateSource source) { return source.currentBuild = build, source; };
}

UpdateSource impatient(UpdateSource source)
{
    return source.timeout = 300ms, source;
}

UpdateSource silent(UpdateSource source)
{
    return source.versionFile.setPort(server().silent), impatient(source);
}

UpdateSource otherRoot(UpdateSource source)
{
    return source.tls = server().trusting("other.pem"), source;
}

/// Whatever the environment says.
UpdateSource systemRoots(UpdateSource source)
{
    qputenv("SSL_CERT_FILE", QFile::encodeName(server().folder().path("root.pem")));
    qputenv("SSL_CERT_DIR", QFile::encodeName(server().folder().path({})));
    return source.tls = {}, source;
}

UpdateSource local(UpdateSource source)
{
    return source.versionFile = server().folder().put("version.json", R"({"version": "3.0", "build": 8})"),
           source;
}

qsizetype sockets()
{
    const QStringList files = QDir("/proc/self/fd").entryList(QDir::Files | QDir::System);
    return std::ranges::count_if(files, [](const QString& number) {
        return QFile::symLinkTarget("/proc/self/fd/" + number).contains("socket:");
    });
}

/// A release by its name and number, a failure by its text.
QString told(const Result& result)
{
    if (const auto* failed = std::get_if<Failed>(&result))
        return failed->text;
    const auto* release = std::get_if<UpdateRelease>(&result);
    return release ? QString("%1 %2").arg(release->version).arg(release->build) : "up to date";
}

const QString notAvailable = "The update information isn't available right now. Try again later.";
const QString couldnt = "Couldn't check for updates: ";

struct AnswerCase {
    const char* name; ///< of what the server gives, and of how it is asked
    QString wantStart;
    How how = [](const UpdateSource& source) { return source; };
};

class Answers : public testing::TestWithParam<AnswerCase> {};

} // namespace

TEST_P(Answers, BecomeResults)
{
    const QString name = QString(GetParam().name).section('_', 0, 0);
    const QString result = told(await(UpdateChecker::check(GetParam().how(server().file(name)), {})));
    EXPECT_TRUE(result.startsWith(GetParam().wantStart)) << result.toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    Rows, Answers,
    testing::Values(AnswerCase{"good", "2.0 7"}, AnswerCase{"good_SameBuild", "up to date", builtAs(7)},
                    AnswerCase{"good_LaterBuild", "up to date", builtAs(8)}, AnswerCase{"full", "2.0 7"},
                    AnswerCase{"tooLong", couldnt + qt_error_string(EFBIG)},
                    AnswerCase{"endless", couldnt + qt_error_string(EFBIG)}, AnswerCase{"gone", notAvailable},
                    AnswerCase{"partial", notAvailable}, AnswerCase{"noJson", couldnt + "illegal value"},
                    AnswerCase{"cut", couldnt + "Connection closed"}, AnswerCase{"moved", "2.0 7"},
                    AnswerCase{"asksForCookies", "2.0 7"}, AnswerCase{"elsewhere", notAvailable},
                    AnswerCase{"plain", notAvailable},
                    AnswerCase{"hanging", couldnt + qt_error_string(ETIMEDOUT), impatient},
                    AnswerCase{"hangsInside", couldnt + qt_error_string(ETIMEDOUT), impatient},
                    AnswerCase{"silent", couldnt + qt_error_string(ETIMEDOUT), silent},
                    AnswerCase{"good_OtherRoot", couldnt + "SSL handshake failed", otherRoot},
                    AnswerCase{"good_SystemRoots", couldnt + "SSL handshake failed", systemRoots},
                    AnswerCase{"local", "3.0 8", local}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(UpdateChecker, GoesByTheSystemsProxy)
{
    server();
    qputenv("https_proxy", "http://127.0.0.1:1");
    const auto reset = qScopeGuard([] { qunsetenv("https_proxy"); });
    const QString result = told(await(UpdateChecker::check(server().file("good"), {})));
    EXPECT_TRUE(result.startsWith(couldnt + "Proxy")) << result.toStdString();
}

TEST(UpdateChecker, ClosesItsConnections)
{
    const auto before = sockets();
    std::stop_source stop;
    QCoro::Task<Result> hanging = UpdateChecker::check(server().file("hanging"), stop.get_token());
    ASSERT_TRUE(QTest::qWaitFor([&] { return sockets() > before; }));
    stop.request_stop();
    EXPECT_EQ(sockets(), before) << "at once";
    EXPECT_THROW(await(std::move(hanging)), Cancelled);
    EXPECT_EQ(told(await(UpdateChecker::check(server().file("good"), {}))), "2.0 7");
    EXPECT_EQ(sockets(), before);
}

TEST(Updates, AreLookedForWhenAskedAndOneCheckAtATime)
{
    Updates updates(server().file("counted"));
    const auto hasEnded = [&] { return !updates.isChecking; };
    EXPECT_FALSE(updates.isChecking || updates.result.value());
    for (const char* want : {"2.0 7", "2.0 8"}) {
        updates.check();
        updates.check();
        EXPECT_TRUE(updates.isChecking && !updates.result.value());
        ASSERT_TRUE(QTest::qWaitFor(hasEnded));
        EXPECT_EQ(told(*updates.result.value()), want);
    }
}

TEST(Updates, GoDuringACheck)
{
    const auto before = sockets();
    auto updates = std::make_unique<Updates>(server().file("hanging"));
    updates->check();
    ASSERT_TRUE(QTest::qWaitFor([&] { return sockets() > before; }));
    updates.reset();
    QCoreApplication::processEvents();
    EXPECT_EQ(sockets(), before);
}

} // namespace folvane
