#pragma once

#include "codes/reading/CodeObservation.h"

#include <opencv2/core.hpp>

#include <optional>
#include <vector>

namespace folvane {

/// Pixels of somebody's shared memory, readable as long as this lives.
class SharedPicture {
public:
    /// Waits for the next request. Nothing when there will be none or it makes no sense.
    static std::optional<SharedPicture> received(int socket);
    SharedPicture(SharedPicture&& other) noexcept;
    SharedPicture& operator=(SharedPicture&&) = delete;
    ~SharedPicture();

    const cv::Mat& pixels() const { return m_pixels; }

private:
    SharedPicture(void* memory, size_t bytes, const cv::Mat& pixels)
        : m_memory(memory), m_bytes(bytes), m_pixels(pixels)
    {
    }

    void* m_memory;
    size_t m_bytes;
    cv::Mat m_pixels;
};

/// False when nobody takes it.
bool answer(int socket, const std::vector<CodeObservation>& codes);

} // namespace folvane
