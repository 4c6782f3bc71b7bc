#include "platform/processes/cleanEnvironment.h"

#include <unistd.h>

namespace folvane {

namespace {

Environment ownEnvironment()
{
    Environment own;
    for (char** entry = environ; entry && *entry; ++entry) {
        const QByteArray text(*entry);
        const qsizetype equals = text.indexOf('=');
        if (equals > 0)
            own.insert(text.left(equals), text.mid(equals + 1));
    }
    return own;
}

Environment cleaned(Environment environment)
{
    environment.removeIf(
        [](const auto& entry) { return entry.key().startsWith("DYLD_") || entry.key().startsWith("LD_"); });
    environment.insert("PATH", "/usr/bin:/bin:/usr/sbin:/sbin");
    return environment;
}

} // namespace

const Environment& cleanEnvironment()
{
    static const Environment environment = cleaned(ownEnvironment());
    return environment;
}

} // namespace folvane
