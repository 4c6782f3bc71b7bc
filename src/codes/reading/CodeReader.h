#pragma once

#include "codes/reading/ReadCode.h"

#include <QImage>

#include <memory>
#include <mutex>
#include <stop_token>
#include <vector>

namespace folvane {

class CodeFinder;

/// Reads the codes in pictures, in a process of its own (folvane-read-codes), which starts with the first picture and stays for
/// the next ones. Any thread may call; one picture is looked at at a time.
class CodeReader {
public:
    CodeReader();
    /// With another program in its place.
    explicit CodeReader(QString program);
    ~CodeReader();
    Q_DISABLE_COPY_MOVE(CodeReader)

    /// In reading order, each payload once. A picture that the process fails on, or takes too long for (3 seconds, 10 above 8
    /// megapixels), counts as one without codes. Blocks; throws Cancelled within 200 ms of a stop.
    std::vector<ReadCode> codes(const QImage& image, const std::stop_token& stop = {});

private:
    /// Null when there is none.
    std::unique_ptr<CodeFinder> runningFinder();

    const QString m_program;
    std::timed_mutex m_mutex; ///< of the finder
    std::unique_ptr<CodeFinder> m_finder;
};

} // namespace folvane
