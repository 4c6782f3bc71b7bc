#pragma once

#include "codes/reading/CodeObservation.h"
#include "platform/files/OwnedDescriptor.h"

#include <QImage>

#include <chrono>
#include <memory>
#include <optional>
#include <stop_token>
#include <vector>

#include <sys/types.h>

namespace folvane {

/// One running process of the program that finds codes. What it answers is checked: the libraries in it take strangers'
/// pictures apart and may be led astray by them.
class CodeFinder {
public:
    /// Null when it does not start.
    static std::unique_ptr<CodeFinder> start(const QString& program);
    ~CodeFinder(); ///< ends the process, whatever it does
    Q_DISABLE_COPY_MOVE(CodeFinder)

    /// False once it died, which it may have done without a picture's fault.
    bool isRunning();

    /// Looks for codes in a grey picture. Nothing when it dies, does not answer in time or answers nonsense; Cancelled after a
    /// stop. After either the finder is of no use any more.
    std::optional<std::vector<CodeObservation>> find(const QImage& grey, std::chrono::milliseconds limit,
                                                     const std::stop_token& stop);

private:
    struct Patience;

    CodeFinder(pid_t process, OwnedDescriptor socket) : m_process(process), m_socket(std::move(socket)) {}

    bool send(const QImage& grey);
    std::optional<QByteArray> receive(qsizetype n, const Patience& patience);

    pid_t m_process;
    OwnedDescriptor m_socket;
};

} // namespace folvane
