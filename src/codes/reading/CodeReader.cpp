#include "codes/reading/CodeReader.h"

#include "codes/reading/CodeFinder.h"
#include "codes/reading/codeMessages.h"
#include "codes/reading/greyPixels.h"
#include "codes/reading/readingOrder.h"
#include "platform/files/helperProgram.h"
#include "platform/tasks/Cancelled.h"

#include <chrono>
#include <utility>

namespace folvane {

namespace {

using namespace std::chrono_literals;

std::chrono::milliseconds limitFor(const QImage& image)
{
    return qint64(image.width()) * image.height() > 8'000'000 ? 10s : 3s;
}

std::unique_lock<std::timed_mutex> lockUnlessStopped(std::timed_mutex& mutex, const std::stop_token& stop)
{
    std::unique_lock lock(mutex, std::defer_lock);
    while (!lock.try_lock_for(50ms))
        throwIfStopped(stop);
    return lock;
}

} // namespace

CodeReader::CodeReader() : CodeReader(helperProgram(readCodesProgram)) {}

CodeReader::CodeReader(QString program) : m_program(std::move(program)) {}

CodeReader::~CodeReader() = default;

std::unique_ptr<CodeFinder> CodeReader::runningFinder()
{
    if (m_finder && m_finder->isRunning())
        return std::move(m_finder);
    return CodeFinder::start(m_program);
}

std::vector<ReadCode> CodeReader::codes(const QImage& image, const std::stop_token& stop)
{
    const QImage grey = greyPixels(image);
    const auto lock = lockUnlessStopped(m_mutex, stop);
    throwIfStopped(stop);
    std::unique_ptr<CodeFinder> finder = grey.isNull() ? nullptr : runningFinder();
    const auto seen = finder ? finder->find(grey, limitFor(grey), stop) : std::nullopt;
    if (!seen)
        return {};
    m_finder = std::move(finder); // only one that answered is asked again
    return withoutRepetitions(inReadingOrder(*seen));
}

} // namespace folvane
