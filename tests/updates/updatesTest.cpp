// Version files, and asking a real server of this machine for them, with a certificate that was made for it.

#include "updates/Updates.h"
#include "updates/UpdateError.h"
#include "updates/versionFile.h"

#include "support/TestFolder.h"
#include "support/await.h"
#include "support/tools.h"

#include <QSslKey>
#include <QSslServer>
#include <QTest>
#include <gmock/gmock.h>

namespace folvane {

namespace {

const QByteArray good = R"({"version": "2.0", "build": 7})";

QByteArray answer(int status, const QByteArray& body, const QByteArray& header = "X: y", qint64 missing = 0)
{
    return "HTTP/1.1 " + QByteArray::number(status) + " -\r\n" + header
           + "\r\nContent-Length: " + QByteArray::number(body.size() + missing) + "\r\n\r\n" + body;
}

/// Gives one answer, and under "/good" always a good one, but to nobody who brings cookies.
class VersionServer {
public:
    explicit VersionServer(QByteArray fixedAnswer = answer(200, good)) : m_answer(std::move(fixedAnswer))
    {
        QSslConfiguration tls = trustingNew("own");
        tls.setLocalCertificate(tls.caCertificates().constFirst());
        tls.setPrivateKey(QSslKey(folder.get("own.key"), QSsl::Ec));
        m_server.setSslConfiguration(tls);
        for (QTcpServer* server : {static_cast<QTcpServer*>(&m_server), &m_plainServer}) {
            server->listen(QHostAddress::LocalHost);
            QObject::connect(server, &QTcpServer::pendingConnectionAvailable, server, [this, server] {
                client = server->nextPendingConnection();
                QObject::connect(client, &QTcpSocket::readyRead, client, [this] { serve(); });
            });
        }
        m_answer.replace("PLAIN", QByteArray::number(m_plainServer.serverPort()));
        m_answer.replace("PORT", QByteArray::number(m_server.serverPort()));
    }

    /// Trusts nothing but a certificate that is made for this.
    QSslConfiguration trustingNew(const QString& name) const
    {
        runTool("openssl", {"req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256", "-nodes",
                            "-subj", "/CN=" + name, "-addext", "subjectAltName=DNS:localhost,IP:127.0.0.1",
                            "-keyout", folder.path(name + ".key"), "-out", folder.path(name)});
        QSslConfiguration tls = QSslConfiguration::defaultConfiguration();
        tls.setCaCertificates({QSslCertificate(folder.get(name))});
        return tls;
    }

    UpdateSource source() const
    {
        const QUrl file(QString("https://localhost:%1/file").arg(m_server.serverPort()));
        return {{}, file, 6, std::chrono::seconds(5), m_server.sslConfiguration()};
    }

    TestFolder folder;
    QTcpSocket* client = nullptr; ///< the last one
    int requests = 0;

private:
    void serve()
    {
        const QByteArray request = client->readAll();
        ++requests;
        client->write(request.contains("\r\nCookie:")    ? answer(500, {})
                      : request.startsWith("GET /good ") ? answer(200, good)
                                                         : m_answer);
        if (!m_answer.contains("hangs"))
            client->disconnectFromHost();
    }

    QByteArray m_answer;
    QSslServer m_server;
    QTcpServer m_plainServer;
};

/// A release by its name and number, a failure by its text.
QString told(const UpdateChecker::Result& result)
{
    if (const auto* failed = std::get_if<UpdateChecker::Failed>(&result))
        return failed->text;
    const auto* release = std::get_if<UpdateRelease>(&result);
    return release ? QString("%1 %2").arg(release->version).arg(release->build) : "up to date";
}

const QString notAvailable = "The update information isn't available right now. Try again later.";
const QString couldnt = "Couldn't check for updates: ";

struct AnswerCase {
    const char* name;
    QByteArray answer;
    QString wantStart;
    void (*ask)(UpdateSource&, const VersionServer&) = [](auto&...) {};
};

class Answers : public testing::TestWithParam<AnswerCase> {};

} // namespace

TEST_P(Answers, BecomeResults)
{
    const VersionServer server(GetParam().answer);
    UpdateSource source = server.source();
    GetParam().ask(source, server);
    const QString result = told(await(UpdateChecker::check(source, {})));
    qunsetenv("https_proxy");
    qunsetenv("SSL_CERT_FILE");
    EXPECT_TRUE(result.startsWith(GetParam().wantStart)) << result.toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    Rows, Answers,
    testing::Values(
        AnswerCase{"Good", answer(200, good), "2.0 7"},
        AnswerCase{"SameBuild", answer(200, good), "up to date",
                   [](UpdateSource& source, auto&) { source.currentBuild = 7; }},
        AnswerCase{"LaterBuild", answer(200, good), "up to date",
                   [](UpdateSource& source, auto&) { source.currentBuild = 8; }},
        AnswerCase{"OtherRoot", answer(200, good), couldnt + "SSL handshake failed",
                   [](UpdateSource& source, auto& server) { source.tls = server.trustingNew("other"); }},
        AnswerCase{"SystemRoots", answer(200, good), couldnt + "SSL handshake failed",
                   [](UpdateSource& source, auto& server) {
                       source.tls = {};
                       qputenv("SSL_CERT_FILE", QFile::encodeName(server.folder.path("own")));
                   }},
        AnswerCase{"Proxy", answer(200, good), couldnt + "Proxy connection refused",
                   [](auto&...) { qputenv("https_proxy", "http://127.0.0.1:1"); }},
        AnswerCase{"Local",
                   {},
                   couldnt + "illegal value",
                   [](UpdateSource& source, auto& server) { source.versionFile = server.folder.url("own"); }},
        AnswerCase{"Gone", answer(404, good), notAvailable},
        AnswerCase{"Partial", answer(206, good), notAvailable},
        AnswerCase{"NoJson", answer(200, "<html>"), couldnt + "illegal value"},
        AnswerCase{"Full", answer(200, good.leftJustified(65536)), "2.0 7"},
        AnswerCase{"TooLong", answer(200, good.leftJustified(65537)), couldnt + qt_error_string(EFBIG)},
        AnswerCase{"Cut", answer(200, good, "X: y", 1), couldnt + "Connection closed"},
        AnswerCase{"Hanging", answer(200, good, "X: hangs", 1), couldnt + qt_error_string(ETIMEDOUT),
                   [](UpdateSource& source, auto&) { source.timeout = std::chrono::milliseconds(300); }},
        AnswerCase{"Moved", answer(302, {}, "Location: /good\r\nSet-Cookie: seen=1"), "2.0 7"},
        AnswerCase{"Circle", answer(302, {}, "Location: /file"), notAvailable},
        AnswerCase{"Elsewhere", answer(302, {}, "Location: https://127.0.0.1:PORT/good"), notAvailable},
        AnswerCase{"Plain", answer(302, {}, "Location: http://localhost:PLAIN/good"), notAvailable}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(Updates, AreLookedForWhenAskedByOneCheckAtATime)
{
    const VersionServer server;
    Updates updates(server.source());
    EXPECT_FALSE(updates.isChecking || updates.result.value());
    for (const int round : {1, 2}) {
        updates.check();
        updates.check();
        EXPECT_TRUE(updates.isChecking && !updates.result.value());
        ASSERT_TRUE(QTest::qWaitFor([&] { return !updates.isChecking; }));
        EXPECT_EQ(told(updates.result.value().value_or(UpdateChecker::Failed())), "2.0 7");
        EXPECT_FALSE(QTest::qWaitFor([&] { return server.requests > round; }, 100));
    }
}

TEST(Updates, LeaveNoConnectionWhenTheyGo)
{
    const VersionServer server(answer(200, good, "X: hangs", 1));
    auto updates = std::make_unique<Updates>(server.source());
    updates->check();
    ASSERT_TRUE(QTest::qWaitFor([&] { return server.requests > 0; }));
    updates.reset();
    EXPECT_TRUE(server.client->waitForDisconnected(1000)) << "no event is needed for it";
}

TEST(VersionFile, IsReadStrictly)
{
    const QByteArray all =
        R"({"sha256": "a", "dmg": "HTTPS://X.y/d", "url": "https://x.y", "build": 9223372036854775807,
                              "version": "2.0", "more": []})";
    EXPECT_EQ(releaseIn(all),
              (UpdateRelease{"2.0", 9223372036854775807, "https://x.y", "HTTPS://X.y/d", "a"}));
    EXPECT_EQ(releaseIn(R"({"version": "", "build": -1, "url": null})"), (UpdateRelease{"", -1}));
    const std::pair<QByteArray, QString> faults[] = {
        {R"([{"version": "2", "build": 7}])", "The file is no object."},
        {R"({"build": 7})", "“version” is missing."},
        {R"({"version": null, "build": 7})", "“version” is missing."},
        {R"({"version": 2, "build": 7})", "“version” isn't text."},
        {R"({"version": "2"})", "“build” is missing."},
        {R"({"version": "2", "build": "7"})", "“build” isn't a whole number."},
        {R"({"version": "2", "build": true})", "“build” isn't a whole number."},
        {R"({"version": "2", "build": 1.5})", "“build” isn't a whole number."},
        {R"({"version": "2", "build": 9223372036854775808})", "“build” isn't a whole number."},
        {R"({"version": "2", "build": 7, "dmg": ""})", "“dmg” isn't an address."},
        {R"({"version": "2", "build": 7, "url": "no address"})", "“url” isn't an address."}};
    for (const auto& [json, fault] : faults)
        EXPECT_THAT([&] { releaseIn(json); },
                    testing::Throws<UpdateError>(testing::Property(&UpdateError::text, couldnt + fault)));
}

TEST(UpdateRelease, SendsNobodyToAnotherSite)
{
    const QUrl page("https://maker.example/folvane/"), own("https://maker.example/2.0?a#b");
    EXPECT_EQ((UpdateRelease{"2", 7, own.toString()}.downloadURL(page)), own);
    EXPECT_EQ((UpdateRelease{"2", 7}.downloadURL(page)), page);
    for (const char* strange :
         {"http://maker.example/", "HTTPS://maker.example/", "https://MAKER.example/", "/2.0",
          "https://maker.example.evil.example/", "https://maker.example@evil.example/"})
        EXPECT_EQ((UpdateRelease{"2", 7, strange}.downloadURL(page)), page) << strange;
}

} // namespace folvane
