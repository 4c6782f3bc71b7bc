#include "tools/compress/RungBuilder.h"

#include "engine/PDFEngine.h"
#include "platform/tasks/Cancelled.h"

#include <QScopeGuard>

#include <algorithm>

namespace folvane {

const QByteArray* RungBuilder::find(const Compression::Rung& rung) const
{
    const auto found = std::ranges::find(m_built, rung, &Built::rung);
    return found == m_built.end() ? nullptr : &found->data;
}

RungBuilder::Running* RungBuilder::running(const Compression::Rung& rung)
{
    const auto found = std::ranges::find(m_running, rung, &Running::rung);
    return found == m_running.end() ? nullptr : &*found;
}

void RungBuilder::keep(Compression::Rung rung, QByteArray data)
{
    if (!find(rung))
        m_built.push_back({rung, std::move(data)});
}

void RungBuilder::begin(const Compression::Rung& rung)
{
    m_running.push_back({rung, {}});
    ++m_builds;
}

void RungBuilder::end(const Compression::Rung& rung)
{
    QList<Answer<bool>> waiting = std::move(running(rung)->waiting);
    std::erase_if(m_running, [&rung](const Running& one) { return one.rung == rung; });
    for (Answer<bool>& answer : waiting)
        answer.give(true);
}

// Who waits for a build that is then stopped or fails builds the rung itself.
QCoro::Task<QByteArray> RungBuilder::build(std::shared_ptr<RungBuilder> builder, Compression::Rung rung,
                                           std::stop_token stop)
{
    throwIfStopped(stop);
    while (Running* running = builder->running(rung)) {
        Answer<bool> ended;
        running->waiting.append(ended);
        const std::stop_callback onStop(stop, [&ended] { ended.give(false); });
        co_await ended;
        throwIfStopped(stop);
    }
    if (const QByteArray* built = builder->find(rung))
        co_return *built;
    BuildPlan plan = builder->m_plan;
    plan.quality = rung;
    builder->begin(rung);
    const auto end = qScopeGuard([&] { builder->end(rung); });
    QCoro::Task<QByteArray> building = builder->m_engine.build(plan, stop);
    const QByteArray data = co_await building;
    builder->keep(rung, data);
    co_return data;
}

} // namespace folvane
