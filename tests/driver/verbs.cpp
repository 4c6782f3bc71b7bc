#include "verbs.h"

namespace folvane::driver {

namespace {

QCoro::Task<> carryOutAtOnce(CallPtr call, void (*work)(Call&))
{
    work(*call);
    co_return;
}

Verbs allVerbs()
{
    Verbs all;
    for (const auto part : {documentVerbs, pageVerbs, savingVerbs, compressVerbs, mergeVerbs, tellingVerbs,
                            jobVerbs, stateVerbs})
        all.merge(part());
    return all;
}

} // namespace

Verb atOnce(void (*work)(Call&))
{
    return [work](const CallPtr& call) { return carryOutAtOnce(call, work); };
}

Verb verbNamed(const QString& name)
{
    static const Verbs verbs = allVerbs();
    const auto found = verbs.find(name);
    return found == verbs.end() ? Verb() : found->second;
}

} // namespace folvane::driver
