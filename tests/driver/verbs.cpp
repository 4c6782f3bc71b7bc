#include "verbs.h"

#include <algorithm>

namespace folvane::driver {

namespace {

QCoro::Task<> atOnce(CallPtr call, void (*work)(Call&))
{
    work(*call);
    co_return;
}

Verbs allVerbs()
{
    Verbs all;
    for (const auto part : {documentVerbs, pageVerbs, savingVerbs, compressVerbs, mergeVerbs, tellingVerbs,
                            jobVerbs, stateVerbs})
        std::ranges::copy(part(), std::back_inserter(all));
    return all;
}

} // namespace

Verb::Verb(const char* called, void (*work)(Call&))
    : name(called), carryOut([work](CallPtr call) { return atOnce(call, work); })
{
}

Verb::Verb(const char* called, QCoro::Task<> (*work)(CallPtr)) : name(called), carryOut(work) {}

Verb::Verb(const char* called, Operation (*work)(CallPtr))
    : name(called), carryOut([work](CallPtr call) { return carryOutJob(call, work(call)); })
{
}

const Verb* verbNamed(const QString& name)
{
    static const Verbs verbs = allVerbs();
    const auto found =
        std::ranges::find_if(verbs, [&](const Verb& verb) { return name == QLatin1String(verb.name); });
    return found == verbs.end() ? nullptr : &*found;
}

} // namespace folvane::driver
