#include "DriverTest.h"

#include "support/madePdf.h"
#include "support/tools.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

#include <stdexcept>

namespace folvane {

namespace {

constexpr int patience = 120'000; // milliseconds, for sanitized builds on a busy machine

void require(bool holds, const char* otherwise)
{
    if (!holds)
        throw std::runtime_error(otherwise);
}

QByteArray withDoubleQuotes(QByteArray text)
{
    return text.replace('\'', '"');
}

QByteArray text(const QJsonValue& value)
{
    return QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
}

bool fits(const QJsonValue& got, const QJsonValue& wanted)
{
    const QJsonObject fields = wanted.toObject();
    for (auto field = fields.begin(); field != fields.end(); ++field)
        if (!got.toObject().contains(field.key()) || !fits(got.toObject()[field.key()], field.value()))
            return false;
    const QJsonArray entries = wanted.toArray();
    for (qsizetype i = 0; i < entries.size(); ++i)
        if (!fits(got.toArray().at(i), entries[i]))
            return false;
    if (wanted.isArray())
        return got.isArray() && got.toArray().size() == entries.size();
    return wanted.isObject() ? got.isObject() : got == wanted;
}

} // namespace

DriverTest::DriverTest()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* variable :
         {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"})
        environment.insert(QLatin1String(variable), m_folder.path());
    m_driver.setProcessEnvironment(environment);
    m_driver.setWorkingDirectory(m_folder.path());
    m_driver.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_driver.start(QStringLiteral(FOLVANE_DRIVER), QStringList());
    write("a.pdf", numberedPdf("a", 5));
    write("b.pdf", numberedPdf("b", 2));
    QFile::link("/dev/full", path("full.pdf"));
}

DriverTest::~DriverTest()
{
    m_driver.closeWriteChannel();
    if (m_driver.state() != QProcess::NotRunning && !m_driver.waitForFinished(patience))
        m_driver.kill();
}

void DriverTest::write(const QString& name, const QByteArray& bytes) const
{
    QFile file(path(name));
    require(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size(), "a fixture is not written");
}

void DriverTest::makeLocked(const QString& name, const QString& password) const
{
    const ToolResult made =
        runTool("qpdf", {"--encrypt", password, password, "256", "--", path("b.pdf"), path(name)});
    require(made.exitCode == 0, "qpdf locks no PDF");
}

void DriverTest::send(const QByteArray& line)
{
    m_driver.write(withDoubleQuotes(line) + '\n');
}

QJsonObject DriverTest::receive()
{
    while (!m_driver.canReadLine())
        require(m_driver.waitForReadyRead(patience), "the driver does not answer");
    QByteArray line = m_driver.readLine();
    const QJsonDocument answer = QJsonDocument::fromJson(line.replace(m_folder.path().toUtf8(), "@"));
    require(answer.isObject(), "the answer is no JSON object");
    return answer.object();
}

QJsonObject DriverTest::ask(const QByteArray& line)
{
    send(line);
    return receive();
}

void DriverTest::expect(const QByteArray& line, const QByteArray& wanted)
{
    send(line);
    SCOPED_TRACE(line.constData());
    expectNext(wanted);
}

void DriverTest::expectNext(const QByteArray& wanted)
{
    const QJsonDocument document = QJsonDocument::fromJson(withDoubleQuotes(wanted));
    require(document.isObject(), "what is wanted is no JSON object");
    const QJsonObject answer = receive();
    EXPECT_TRUE(fits(answer, document.object()))
        << text(answer).constData() << "\nlacks " << wanted.constData();
}

qsizetype DriverTest::finish()
{
    m_driver.closeWriteChannel();
    require(m_driver.waitForFinished(patience), "the driver does not end");
    EXPECT_EQ(m_driver.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(m_driver.exitCode(), 0);
    return m_driver.readAll().count('\n');
}

} // namespace folvane
