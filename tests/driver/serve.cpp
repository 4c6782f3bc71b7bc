#include "serve.h"

#include "Call.h"
#include "LineReader.h"
#include "verbs.h"

#include <QCoroFuture>

namespace folvane::driver {

namespace {

void finish(const CallPtr& call)
{
    call->stopTime();
    call->takeNotices();
    call->takePanels();
    call->answer.prompts = call->passwords().asked();
    call->program().calls.removeOne(call);
    call->end();
}

// Whatever goes wrong becomes the answer: nothing may end the driver.
QCoro::Task<> carryOut(CallPtr call, Verb verb)
{
    try {
        QCoro::Task<> running = verb(call);
        co_await running;
    } catch (const std::exception& error) {
        call->answer.bad = QString::fromUtf8(error.what());
    }
    finish(call);
}

int keepAsJob(const CallPtr& call)
{
    auto& jobs = call->program().jobs;
    const int number = ++call->program().lastJob;
    jobs.emplace(number, call);
    return number;
}

// The first steps are done, panels included; the rest goes on beside the requests that follow.
void answerAtOnce(const CallPtr& call)
{
    call->takePanels();
    if (call->hasEnded() && !call->answer.bad.isEmpty())
        return call->answer.write(call->request.id());
    writeJob(call->request.id(), keepAsJob(call));
}

QCoro::Task<> answerRequest(Program* program, Request request)
{
    const Verb verb = verbNamed(request.verb());
    if (!verb)
        throw BadRequest(QStringLiteral("there is no verb \"%1\"").arg(request.verb()));
    const bool isAsync = request.flag("async", false);
    if (isAsync && (verb == waitForJob || verb == cancelJob))
        throw BadRequest(QStringLiteral("\"%1\" cannot be async").arg(request.verb()));
    const auto call = std::make_shared<Call>(*program, request);
    program->panels.load(request);
    program->calls.append(call);
    QCoro::Task<> running = carryOut(call, verb);
    if (isAsync)
        co_return answerAtOnce(call);
    co_await running;
    call->answer.write(request.id());
}

QCoro::Task<> answerLine(Program* program, LineReader::Line line)
{
    QJsonValue id(QJsonValue::Undefined);
    QString bad;
    try {
        if (line.isTooLong)
            throw BadRequest(QStringLiteral("the line is too long"));
        const Request request = Request::parse(line.text);
        id = request.id();
        QCoro::Task<> answering = answerRequest(program, request);
        co_await answering;
    } catch (const BadRequest& error) {
        bad = QString::fromUtf8(error.what());
    }
    if (!bad.isEmpty())
        writeBad(id, bad);
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
    LineReader reader;
    while (true) {
        QCoro::Task<std::optional<LineReader::Line>> reading = reader.next();
        const std::optional<LineReader::Line> line = co_await reading;
        if (!line)
            break;
        QCoro::Task<> answering = answerLine(program, *line);
        co_await answering;
    }
    QCoro::Task<> stopping = stopJobs(program);
    co_await stopping;
}

} // namespace folvane::driver
