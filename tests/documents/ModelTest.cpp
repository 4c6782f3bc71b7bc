#include "documents/ModelTest.h"

#include "support/madePdf.h"
#include "support/tools.h"

#include <QCoreApplication>
#include <QImage>
#include <QTest>
#include <QTimer>

namespace folvane {

ModelTest::ModelTest()
    : model(std::make_unique<AppModel>(Services{engine, panels, preferences, workspace, clock}))
{
}

QUrl ModelTest::putPdf(const QString& name, int pages) const
{
    return put(name, numberedPdf(nameWithoutEnding(url(name)).toUtf8(), pages));
}

QUrl ModelTest::putLockedPdf(const QString& name, int pages, const QString& password) const
{
    const QUrl target = putPdf(name, pages);
    const ToolResult locking =
        runTool("qpdf", {"--replace-input", "--encrypt", password, password, "256", "--", path(name)});
    if (locking.exitCode != 0)
        throw std::runtime_error(locking.errors.toStdString());
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

void ModelTest::saveTo(const QString& name, const std::function<QCoro::Task<>()>& operation)
{
    panels.saveAnswers << url(name);
    await(operation());
    runUntilIdle();
}

void ModelTest::saveAs(const OpenFilePtr& file, const QString& name)
{
    saveTo(name, [this, file] { return model->saveAs(file); });
}

void ModelTest::runUntil(const std::function<bool()>& holds) const
{
    if (!QTest::qWaitFor(holds, std::chrono::milliseconds(awaitLimit).count()))
        throw std::runtime_error("what was waited for never came");
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

QString textsIn(const QString& pdf, const QString& password)
{
    const ToolResult reading = runTool("pdftotext", {"-upw", password, pdf, "-"});
    return QString::fromUtf8(reading.output + reading.errors).simplified();
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

} // namespace folvane
