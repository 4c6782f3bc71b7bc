#include "serve.h"

#include "Call.h"
#include "platform/tasks/JobQueue.h"
#include "verbs.h"

#include <QCoroFuture>

#include <iostream>
#include <string>

namespace folvane::driver {

namespace {

using Line = std::optional<QByteArray>;

/// The next line of standard input; nothing at its end.
Line readLine()
{
    std::string line;
    return std::getline(std::cin, line) ? Line(QByteArray::fromStdString(line)) : std::nullopt;
}

// Whatever goes wrong becomes the answer: nothing may end the driver.
QCoro::Task<> carryOut(CallPtr call, const Verb* verb)
{
    try {
        QCoro::Task<> running = verb->carryOut(call);
        co_await running;
    } catch (const std::exception& error) {
        call->answer.bad = QString::fromUtf8(error.what());
    }
    call->program.calls.removeOne(call);
    call->end();
}

// The first steps are done, panels included; the rest goes on beside the requests that follow.
void answerAtOnce(const CallPtr& call)
{
    call->takePanels();
    if (call->ended().isFinished() && !call->answer.bad.isEmpty())
        return writeLine(call->answer.toJson(), call->request.id());
    const int number = ++call->program.lastJob;
    call->program.jobs.emplace(number, call);
    writeLine({{"ok", true}, {"job", number}}, call->request.id());
}

QCoro::Task<> answerRequest(Program* program, Request request)
{
    const auto name = request.get<QString>("do");
    const Verb* verb = verbNamed(name);
    const bool isAsync = request.get<bool>("async", false);
    if (!verb || (isAsync && (name == QLatin1String("wait") || name == QLatin1String("cancel"))))
        throw BadRequest(QStringLiteral("there is no verb \"%1\"").arg(name));
    const auto call = std::make_shared<Call>(*program, request);
    program->panels = panelsFor(request);
    program->calls.append(call);
    QCoro::Task<> running = carryOut(call, verb);
    if (isAsync)
        co_return answerAtOnce(call);
    co_await running;
    writeLine(call->answer.toJson(), request.id());
}

QCoro::Task<> answerLine(Program* program, QByteArray line)
{
    QJsonValue id(QJsonValue::Undefined);
    Answer answer;
    try {
        const Request request(line);
        id = request.id();
        QCoro::Task<> answering = answerRequest(program, request);
        co_await answering;
    } catch (const BadRequest& error) {
        answer.bad = QString::fromUtf8(error.what());
    }
    if (!answer.bad.isEmpty())
        writeLine(answer.toJson(), id);
}

QCoro::Task<> stopJobs(Program* program)
{
    while (!program->calls.isEmpty()) {
        const CallPtr call = program->calls.first();
        call->task.request_stop();
        const QFuture<void> end = call->ended();
        co_await end;
    }
}

} // namespace

QCoro::Task<> serve(Program* program)
{
    JobQueue input{QStringLiteral("requests"), 1, 0}; // the event loop goes on meanwhile
    while (true) {
        QCoro::Task<Line> reading = input.run(readLine);
        const Line line = co_await reading;
        if (!line)
            break;
        QCoro::Task<> answering = answerLine(program, *line);
        co_await answering;
    }
    QCoro::Task<> stopping = stopJobs(program);
    co_await stopping;
}

} // namespace folvane::driver
