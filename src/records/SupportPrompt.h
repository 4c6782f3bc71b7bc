#pragma once

namespace folvane {

/// Why a request to the user is up: two come by themselves, by strict rules.
enum class SupportPrompt {
    Manual, ///< the user wants to support the program
    AfterFirstResult,
    TellAFriend
};

} // namespace folvane
