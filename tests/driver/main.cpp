#include "verbs.h"

#include "config.h"
#include "engine/PDFEngine.h"
#include "pictures/pictures.h"
#include "platform/files/SourceFile.h"
#include "platform/tasks/JobQueue.h"
#include "platform/texts/translations.h"
#include "support/await.h"

#include <QGuiApplication>
#include <QJsonDocument>

#include <iostream>
#include <string>

namespace folvane::driver {

namespace {

using Line = std::optional<QByteArray>;

constexpr std::chrono::hours forEver{500}; // about as long as a timer can wait

/// The next line of standard input; nothing at its end.
Line readLine()
{
    std::string line;
    return std::getline(std::cin, line) ? Line(QByteArray::fromStdString(line)) : std::nullopt;
}

/// Writes the object on one line of standard output; it gets the id, unless that is undefined.
void writeLine(QJsonObject object, const QJsonValue& id)
{
    object.insert("id", id);
    std::cout << QJsonDocument(object).toJson(QJsonDocument::Compact).toStdString() << std::endl;
}

// Whatever goes wrong becomes the reply: nothing may end the driver.
QCoro::Task<> carryOut(CallPtr call, Verb verb)
{
    try {
        QCoro::Task<> running = verb(call);
        co_await running;
        if (call->waitsForEngine) {
            QCoro::Task<QSizeF> behind =
                call->model().engine().displaySize({}, 0); // requests are done in order
            co_await behind;
        }
    } catch (const Refused&) {
        call->reply.outcome = Outcome::Refused;
    } catch (const std::exception& error) {
        call->reply.bad = QString::fromUtf8(error.what());
    }
    call->program.calls.removeOne(call);
    call->end();
}

// Of an asynchronous request only the first steps are done, panels included; the rest goes on beside the requests that
// follow.
void answerRequest(Program& program, const Request& request)
{
    const auto name = request.get<QString>("do");
    const Verb verb = verbNamed(name);
    const bool isAsync = request.get<bool>("async", false);
    if (!verb || (isAsync && (name == QLatin1String("wait") || name == QLatin1String("cancel"))))
        throw BadRequest(QStringLiteral("there is no verb \"%1\"").arg(name));
    const auto call = std::make_shared<Call>(program, request);
    program.panels = panelsFor(request);
    program.calls.append(call);
    QCoro::Task<> running = carryOut(call, verb);
    if (!isAsync || !call->reply.bad.isEmpty()) {
        await(std::move(running), forEver);
        return writeLine(call->reply.toJson(), request.id());
    }
    call->takePanels();
    program.jobs.emplace(++program.lastJob, call);
    writeLine({{"ok", true}, {"job", program.lastJob}}, request.id());
}

void answerLine(Program& program, const QByteArray& line)
{
    QJsonValue id(QJsonValue::Undefined);
    try {
        const Request request(line);
        id = request.id();
        answerRequest(program, request);
    } catch (const BadRequest& error) {
        writeLine({{"ok", false}, {"bad", error.what()}}, id);
    }
}

QCoro::Task<> stop(CallPtr call)
{
    call->task.request_stop();
    co_await call->ended;
}

/// Answers the requests of standard input, one after the other, until its end; then stops what still runs.
void serve(Program& program)
{
    JobQueue input{QStringLiteral("requests"), 1, 0}; // the event loop goes on meanwhile
    while (const Line line = await(input.run(readLine), forEver))
        answerLine(program, *line);
    while (!program.calls.isEmpty())
        await(stop(program.calls.first()), forEver);
}

} // namespace

} // namespace folvane::driver

int main(int argc, char** argv)
{
    using namespace folvane;
    if (!qEnvironmentVariableIsSet(
            "QT_QPA_PLATFORM")) // text in pictures needs the fonts of one, but no display
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    QCoreApplication::setApplicationName(config::appName.toString());
    installTranslations();
    raiseDescriptorLimit();
    preparePictureDecoding();
    driver::Program program;
    driver::serve(program);
}
