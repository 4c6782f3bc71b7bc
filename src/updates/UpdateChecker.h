#pragma once

#include "updates/UpdateRelease.h"
#include "updates/UpdateSource.h"

#include <QCoroTask>

#include <stop_token>
#include <variant>

/// Asks the maker's site, once, whether there is a newer build.
namespace folvane::UpdateChecker {

struct Failed {
    QString text; ///< a sentence for the user

    bool operator==(const Failed&) const = default;
};

struct UpToDate {
    bool operator==(const UpToDate&) const = default;
};

/// A release is one that is newer.
using Result = std::variant<UpdateRelease, Failed, UpToDate>;

/// Opens connections now and closes them before it ends. Throws Cancelled after a stop, which is to be requested on the same
/// thread, and nothing else.
QCoro::Task<Result> check(UpdateSource source, std::stop_token stop);

} // namespace folvane::UpdateChecker
