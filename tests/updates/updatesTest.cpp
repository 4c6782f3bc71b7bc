// Version files, and asking a real server of this machine for them, with a certificate that was made for it.

#include "updates/Updates.h"
#include "updates/UpdateError.h"
#include "updates/versionFile.h"

#include "support/TestFolder.h"
#include "support/await.h"

#include <QDir>
#include <QProcess>
#include <QTest>
#include <gmock/gmock.h>

namespace folvane {

namespace {

/// The script beside this file, which tells what it does.
struct VersionServer {
    VersionServer()
    {
        qputenv("SSL_CERT_FILE", QFile::encodeName(folder.path("own.pem"))); // must not matter
        process.start("python3", {"-B", FOLVANE_VERSION_SERVER, folder.path({})});
        while (!process.canReadLine())
            if (!process.waitForReadyRead(60'000))
                throw std::runtime_error("no server: " + process.readAllStandardError().toStdString());
        port = process.readLine().trimmed();
    }
    ~VersionServer()
    {
        process.closeWriteChannel();
        process.waitForFinished();
    }

    QSslConfiguration trusting(const QString& certificate) const
    {
        QSslConfiguration tls = QSslConfiguration::defaultConfiguration();
        tls.setCaCertificates({QSslCertificate(folder.get(certificate))});
        return tls;
    }
    UpdateSource source(const QString& file) const
    {
        return {
            {}, "https://localhost:" + port + "/" + file, 6, std::chrono::seconds(5), trusting("own.pem")};
    }

    TestFolder folder;
    QProcess process;
    QString port;
};

const VersionServer& server()
{
    static const VersionServer only;
    return only;
}

/// A release by its name and number, a failure by its text.
QString told(const UpdateChecker::Result& result)
{
    if (const auto* failed = std::get_if<UpdateChecker::Failed>(&result))
        return failed->text;
    const auto* release = std::get_if<UpdateRelease>(&result);
    return release ? QString("%1 %2").arg(release->version).arg(release->build) : "up to date";
}

qsizetype sockets()
{
    const QStringList all = QDir("/proc/self/fd").entryList(QDir::Files | QDir::System);
    return std::ranges::count_if(all, [](const QString& number) {
        return QFile::symLinkTarget("/proc/self/fd/" + number).contains("socket:");
    });
}

const QString notAvailable = "The update information isn't available right now. Try again later.";
const QString couldnt = "Couldn't check for updates: ";

struct AnswerCase {
    const char* name; ///< of what the server gives, and of how it is asked
    QString wantStart;
    void (*change)(UpdateSource& source) = [](UpdateSource&) {};
};

class Answers : public testing::TestWithParam<AnswerCase> {};

} // namespace

TEST_P(Answers, BecomeResults)
{
    UpdateSource source = server().source(QString(GetParam().name).section('_', 0, 0));
    GetParam().change(source);
    const QString result = told(await(UpdateChecker::check(source, {})));
    qunsetenv("https_proxy");
    EXPECT_TRUE(result.startsWith(GetParam().wantStart)) << result.toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    Rows, Answers,
    testing::Values(
        AnswerCase{"good", "2.0 7"},
        AnswerCase{"good_SameBuild", "up to date", [](UpdateSource& source) { source.currentBuild = 7; }},
        AnswerCase{"good_LaterBuild", "up to date", [](UpdateSource& source) { source.currentBuild = 8; }},
        AnswerCase{"good_OtherRoot", couldnt + "SSL handshake failed",
                   [](UpdateSource& source) { source.tls = server().trusting("other.pem"); }},
        AnswerCase{"good_SystemRoots", couldnt + "SSL handshake failed",
                   [](UpdateSource& source) { source.tls = {}; }},
        AnswerCase{"good_Proxy", couldnt + "Proxy connection refused",
                   [](UpdateSource&) { qputenv("https_proxy", "http://127.0.0.1:1"); }},
        AnswerCase{"local", couldnt + "illegal value",
                   [](UpdateSource& source) { source.versionFile = server().folder.url("own.pem"); }},
        AnswerCase{"full", "2.0 7"}, AnswerCase{"tooLong", couldnt + qt_error_string(EFBIG)},
        AnswerCase{"endless", couldnt + qt_error_string(EFBIG)}, AnswerCase{"gone", notAvailable},
        AnswerCase{"partial", notAvailable}, AnswerCase{"noJson", couldnt + "illegal value"},
        AnswerCase{"cut", couldnt + "Connection closed"},
        AnswerCase{"hangs", couldnt + qt_error_string(ETIMEDOUT),
                   [](UpdateSource& source) { source.timeout = std::chrono::milliseconds(300); }},
        AnswerCase{"moved", "2.0 7"}, AnswerCase{"elsewhere", notAvailable},
        AnswerCase{"plain", notAvailable}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(Updates, AreLookedForWhenAskedByOneCheckAtATime)
{
    const auto before = sockets();
    auto updates = std::make_unique<Updates>(server().source("counted"));
    const auto hasEnded = [&] { return !updates->isChecking && sockets() == before; };
    EXPECT_TRUE(hasEnded() && !updates->result.value());
    for (const char* want : {"2.0 7", "2.0 8"}) {
        updates->check();
        updates->check();
        EXPECT_TRUE(updates->isChecking && !updates->result.value());
        ASSERT_TRUE(QTest::qWaitFor(hasEnded));
        EXPECT_EQ(told(*updates->result.value()), want);
        QTest::qWait(100); // the server would have counted another one by now
    }
    updates = std::make_unique<Updates>(server().source("hangs"));
    updates->check();
    ASSERT_TRUE(QTest::qWaitFor([&] { return sockets() > before; }));
    updates.reset();
    EXPECT_EQ(sockets(), before) << "the connection went with it";
    QCoreApplication::processEvents();
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
