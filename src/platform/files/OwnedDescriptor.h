#pragma once

#include <utility>

#include <unistd.h>

namespace folvane {

/// A descriptor of the system that is closed by whoever owns it last. Negative: none.
class OwnedDescriptor {
public:
    OwnedDescriptor() = default;
    explicit OwnedDescriptor(int descriptor) : m_descriptor(descriptor) {}
    OwnedDescriptor(OwnedDescriptor&& other) noexcept : m_descriptor(std::exchange(other.m_descriptor, -1)) {}
    OwnedDescriptor& operator=(OwnedDescriptor&& other) noexcept
    {
        std::swap(m_descriptor, other.m_descriptor);
        return *this;
    }
    ~OwnedDescriptor()
    {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
    }

    explicit operator bool() const { return m_descriptor >= 0; }
    int number() const { return m_descriptor; }

private:
    int m_descriptor = -1;
};

} // namespace folvane
