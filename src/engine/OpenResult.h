#pragma once

namespace folvane {

/// How an opening by the engine ended.
struct OpenResult {
    enum class Kind { Opened, NeedsPassword, Unreadable };

    Kind kind = Kind::Unreadable;
    int pageCount = 0; ///< only when opened

    static OpenResult opened(int pageCount) { return {Kind::Opened, pageCount}; }
    static OpenResult needsPassword() { return {Kind::NeedsPassword, 0}; }
    static OpenResult unreadable() { return {Kind::Unreadable, 0}; }
    bool operator==(const OpenResult&) const = default;
};

} // namespace folvane
