#pragma once

namespace folvane {

/// Which support sheet is up.
enum class SupportPrompt { Manual, AfterFirstResult, TellAFriend };

} // namespace folvane
