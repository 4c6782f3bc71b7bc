#include "documents/ModelTest.h"

#include "documents/fileNames.h"
#include "platform/tasks/background.h"
#include "platform/tasks/spawn.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QThread>
#include <QTimer>

#include <stdexcept>

#include <sys/wait.h>
#include <unistd.h>

namespace folvane {

namespace {

QByteArray pageObject(int number, int content)
{
    return QByteArray::number(number) + " 0 obj\n<</Type/Page/Parent 2 0 R/MediaBox[0 0 600 800]/Contents "
           + QByteArray::number(content) + " 0 R/Resources<</Font<</F 3 0 R>>>>>>\nendobj\n";
}

QByteArray contentObject(int number, const QByteArray& text)
{
    const QByteArray content = "BT/F 24 Tf 72 700 Td(" + text + ")Tj ET";
    return QByteArray::number(number) + " 0 obj\n<</Length " + QByteArray::number(content.size())
           + ">>stream\n" + content + "\nendstream\nendobj\n";
}

QList<QByteArray> objects(const QByteArray& name, int pages)
{
    QByteArray kids;
    for (int i = 0; i < pages; ++i)
        kids += QByteArray::number(4 + 2 * i) + " 0 R ";
    QList<QByteArray> all{"1 0 obj\n<</Type/Catalog/Pages 2 0 R>>\nendobj\n",
                          "2 0 obj\n<</Type/Pages/Count " + QByteArray::number(pages) + "/Kids[" + kids
                              + "]>>\nendobj\n",
                          "3 0 obj\n<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>\nendobj\n"};
    for (int i = 0; i < pages; ++i)
        all << pageObject(4 + 2 * i, 5 + 2 * i)
            << contentObject(5 + 2 * i, name + '-' + QByteArray::number(i + 1));
    return all;
}

QByteArray plainPdf(const QByteArray& name, int pages)
{
    QByteArray pdf = "%PDF-1.4\n";
    QByteArray table = "0000000000 65535 f \n";
    const QList<QByteArray> all = objects(name, pages);
    for (const QByteArray& object : all) {
        table += QByteArray::number(pdf.size()).rightJustified(10, '0') + " 00000 n \n";
        pdf += object;
    }
    const QByteArray size = QByteArray::number(all.size() + 1);
    const QByteArray start = QByteArray::number(pdf.size());
    return pdf + "xref\n0 " + size + '\n' + table + "trailer\n<</Size " + size + "/Root 1 0 R>>\nstartxref\n"
           + start + "\n%%EOF\n";
}

struct Output {
    int exitCode;
    QString text;
};

Output runTool(const QString& program, const QStringList& arguments)
{
    QProcess tool;
    tool.setProcessChannelMode(QProcess::MergedChannels);
    tool.start(program, arguments);
    if (!tool.waitForFinished(60000) || tool.exitStatus() != QProcess::NormalExit)
        throw std::runtime_error("cannot run " + program.toStdString());
    return {tool.exitCode(), QString::fromUtf8(tool.readAll())};
}

} // namespace

ModelTest::ModelTest()
    : model(std::make_unique<AppModel>(Services{engine, panels, preferences, workspace, clock}))
{
}

QUrl ModelTest::put(const QString& name, const QByteArray& bytes) const
{
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        throw std::runtime_error("cannot write " + name.toStdString());
    return url(name);
}

QByteArray ModelTest::get(const QString& name) const
{
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
}

QUrl ModelTest::putPdf(const QString& name, int pages) const
{
    return put(name, plainPdf(nameWithoutEnding(url(name)).toUtf8(), pages));
}

QUrl ModelTest::putLockedPdf(const QString& name, int pages, const QString& password) const
{
    const QUrl target = putPdf(name, pages);
    const Output output =
        runTool("qpdf", {"--replace-input", "--encrypt", password, password, "256", "--", path(name)});
    if (output.exitCode != 0)
        throw std::runtime_error(output.text.toStdString());
    return target;
}

QUrl ModelTest::putPicture(const QString& name) const
{
    QImage image(60, 80, QImage::Format_RGB32);
    image.fill(Qt::darkGreen);
    if (!image.save(path(name), "PNG"))
        throw std::runtime_error("cannot write " + name.toStdString());
    return url(name);
}

OpenFilePtr ModelTest::open(const QList<QUrl>& urls)
{
    await(model->open(urls));
    return shown();
}

OpenFilePtr ModelTest::shown() const
{
    const std::optional<Destination> destination = model->destination;
    return destination ? model->file(destination->fileID()) : nullptr;
}

void ModelTest::answerPasswords(const QHash<QString, QStringList>& answers)
{
    m_passwords = answers;
    m_onQuestion = model->passwordRequest.addNotifier([this] {
        const std::optional<PasswordRequest> request = model->passwordRequest;
        if (!request)
            return;
        questions << request->fileName + (request->wasWrong ? "!" : "");
        QStringList& left = m_passwords[request->fileName];
        const std::optional<QString> answer = left.isEmpty() ? std::nullopt : std::optional(left.takeFirst());
        QTimer::singleShot(0, model.get(), [this, answer] { model->answerPassword(answer); });
    });
}

void ModelTest::runUntil(const std::function<bool()>& holds) const
{
    const QDeadlineTimer deadline(awaitLimit);
    QTimer waker; // processEvents() returns for the deadline's sake, too
    waker.start(1000);
    while (!holds()) {
        if (deadline.hasExpired())
            throw std::runtime_error("what was waited for never came");
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
}

void ModelTest::runUntilIdle() const
{
    runUntil([this] { return !model->busy.value(); });
}

void ModelTest::drainEngine()
{
    await(engine.displaySize(PageSource(), 0));
    QCoreApplication::processEvents();
}

bool ModelTest::isHeld(const QUrl& lockedPdf)
{
    return await(engine.open(lockedPdf)).kind == OpenResult::Kind::Opened;
}

namespace {

const int enoughForEveryThread = QThread::idealThreadCount() + 1;

} // namespace

HeldBackground::HeldBackground()
{
    const auto waiting = [gate = m_gate] { gate->acquire(); };
    for (int i = 0; i < enoughForEveryThread; ++i)
        spawn(inBackground(waiting));
}

HeldBackground::~HeldBackground()
{
    m_gate->release(enoughForEveryThread);
}

QString textsIn(const QString& pdf, const QString& password)
{
    const Output output = runTool("pdftotext", {"-upw", password, pdf, "-"});
    return output.text.simplified();
}

QString complaintsAbout(const QString& pdf, const QString& password)
{
    const Output output = runTool("qpdf", {"--check", "--password=" + password, pdf});
    return output.exitCode == 0 ? QString() : output.text;
}

bool needsPassword(const QString& pdf)
{
    return runTool("qpdf", {"--requires-password", pdf}).exitCode == 0;
}

QString order(const OpenFile& file)
{
    QStringList pages;
    for (const PageItem& page : file.pages.value())
        pages << nameWithoutEnding(page.source.url) + '-' + QString::number(page.source.index + 1);
    return pages.join(' ');
}

QSet<QUuid> at(const OpenFile& file, const QList<int>& positions)
{
    QSet<QUuid> ids;
    for (const int position : positions)
        ids.insert(file.pages.value().at(static_cast<size_t>(position - 1)).id);
    return ids;
}

bool wasLeftToAnOrdinaryUser()
{
    if (::geteuid() != 0)
        return false;
    constexpr uid_t nobody = 65534;
    const testing::TestInfo& test = *testing::UnitTest::GetInstance()->current_test_info();
    const std::string filter = std::string("--gtest_filter=") + test.test_suite_name() + '.' + test.name();
    const pid_t child = ::fork();
    if (child == 0) {
        ::unsetenv("TMPDIR"); // may belong to the superuser
        if (::setgid(nobody) == 0 && ::setuid(nobody) == 0)
            ::execl("/proc/self/exe", "test", filter.c_str(), nullptr);
        ::_exit(127);
    }
    int status = -1;
    ::waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "as an ordinary user: status " << status;
    return true;
}

} // namespace folvane
