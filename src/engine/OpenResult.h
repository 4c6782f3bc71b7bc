#pragma once

#include "platform/files/SourceFile.h"

#include <optional>

namespace folvane {

/// What an opening does about a file that is held but has been replaced or rewritten on disk since.
enum class WhenChanged { KeepHeld, OpenAnew };

/// How an opening by the engine ended.
struct OpenResult {
    enum class Kind { Opened, NeedsPassword, Unreadable };

    Kind kind = Kind::Unreadable;
    int pageCount = 0;                  ///< only when opened
    std::optional<FileVersion> version; ///< of the file that is held: its path may lead to another one by now
    int systemError = 0;                ///< what kept the system from opening or reading it, when that is why

    static OpenResult opened(int pageCount) { return {Kind::Opened, pageCount, {}, 0}; }
    static OpenResult needsPassword() { return {Kind::NeedsPassword, 0, {}, 0}; }
    static OpenResult unreadable(int systemError = 0) { return {Kind::Unreadable, 0, {}, systemError}; }
    /// Whichever file it is.
    bool operator==(const OpenResult& other) const
    {
        return kind == other.kind && pageCount == other.pageCount;
    }
};

} // namespace folvane
