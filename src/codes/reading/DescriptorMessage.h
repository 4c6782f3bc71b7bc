#pragma once

#include <array>

#include <sys/socket.h>

namespace folvane {

/// A message of a local socket: a value and, beside it, room for one descriptor. Its parts point into it, so it stays where it is.
template <typename Value>
struct DescriptorMessage {
    DescriptorMessage() = default;
    DescriptorMessage(const DescriptorMessage&) = delete;
    DescriptorMessage& operator=(const DescriptorMessage&) = delete;

    Value value{};
    iovec bytes{&value, sizeof value};
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(int))> room{};
    msghdr header{nullptr, 0, &bytes, 1, room.data(), room.size(), 0};
};

} // namespace folvane
