#include "readCodes/requests.h"

#include "codes/reading/DescriptorMessage.h"
#include "codes/reading/codeMessages.h"
#include "platform/files/OwnedDescriptor.h"

#include <cstring>
#include <utility>

#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/stat.h>

namespace folvane {

namespace {

struct Request {
    PictureShape shape;
    OwnedDescriptor memory;
};

OwnedDescriptor descriptorIn(msghdr& message)
{
    const cmsghdr* rights = CMSG_FIRSTHDR(&message);
    if (!rights || rights->cmsg_level != SOL_SOCKET || rights->cmsg_type != SCM_RIGHTS
        || rights->cmsg_len != CMSG_LEN(sizeof(int)))
        return {};
    int number = -1;
    std::memcpy(&number, CMSG_DATA(rights), sizeof number);
    return OwnedDescriptor(number);
}

std::optional<Request> nextRequest(int socket)
{
    DescriptorMessage<PictureShape> message;
    const ssize_t got = ::recvmsg(socket, &message.header, MSG_WAITALL | MSG_CMSG_CLOEXEC);
    if (got != ssize_t(sizeof message.value))
        return std::nullopt;
    return Request{message.value, descriptorIn(message.header)};
}

/// Reading what its memory does not hold would end the process.
bool isSound(const Request& request)
{
    struct stat memory{};
    const PictureShape& shape = request.shape;
    return request.memory && ::fstat(request.memory.number(), &memory) == 0 && shape.width > 0
           && shape.height > 0 && shape.stride >= shape.width
           && qint64(shape.width) * shape.height <= maxCodePicturePixels
           && qint64(shape.stride) * shape.height <= memory.st_size;
}

bool sendAll(int socket, const QByteArray& bytes)
{
    for (qsizetype sent = 0; sent < bytes.size();) {
        const ssize_t n = ::send(socket, bytes.constData() + sent, size_t(bytes.size() - sent), MSG_NOSIGNAL);
        if (n <= 0)
            return false;
        sent += n;
    }
    return true;
}

} // namespace

std::optional<SharedPicture> SharedPicture::received(int socket)
{
    const std::optional<Request> request = nextRequest(socket);
    if (!request || !isSound(*request))
        return std::nullopt;
    const PictureShape& shape = request->shape;
    const size_t bytes = size_t(shape.stride) * shape.height;
    void* memory = ::mmap(nullptr, bytes, PROT_READ, MAP_PRIVATE, request->memory.number(), 0);
    if (memory == MAP_FAILED)
        return std::nullopt;
    return SharedPicture(memory, bytes,
                         cv::Mat(int(shape.height), int(shape.width), CV_8U, memory, shape.stride));
}

SharedPicture::SharedPicture(SharedPicture&& other) noexcept
    : m_memory(std::exchange(other.m_memory, nullptr)), m_bytes(other.m_bytes), m_pixels(other.m_pixels)
{
}

SharedPicture::~SharedPicture()
{
    if (m_memory)
        ::munmap(m_memory, m_bytes);
}

bool answer(int socket, const std::vector<CodeObservation>& codes)
{
    const QByteArray body = encodedCodes(codes);
    const auto length = quint32(body.size());
    return sendAll(socket, QByteArray(reinterpret_cast<const char*>(&length), sizeof length) + body);
}

} // namespace folvane
