// Sources that cannot be read for a while, and work that is stopped in the middle of reading them.

#include "engine/EngineTest.h"
#include "pdf/madeImages.h"
#include "platform/tasks/Cancelled.h"
#include "support/madePdf.h"

#include <cerrno>
#include <functional>

#include <sys/syscall.h>
#include <unistd.h>

namespace folvane {

namespace {

/// One page with a large stream, so that reads happen while a copy is written.
QByteArray longPage()
{
    return pdfOfPages({{QByteArray("20 20 9 9 re f\n").repeated(20'000)}});
}

std::function<bool(int)> refusesRead;
int readCount = 0;

/// While it lives, `refuses` is asked before each read by position of the process, with how many came before it; where it
/// says yes, that read fails as on a broken disk.
class ReadHook {
public:
    explicit ReadHook(std::function<bool(int)> refuses)
    {
        readCount = 0;
        refusesRead = std::move(refuses);
    }
    ~ReadHook() { refusesRead = nullptr; }
    Q_DISABLE_COPY_MOVE(ReadHook)
};

} // namespace

// Stands before the C library's.
extern "C" ssize_t pread(int descriptor, void* to, size_t length, off_t offset)
{
    if (refusesRead && refusesRead(readCount++)) {
        errno = EIO;
        return -1;
    }
    return ::syscall(SYS_pread64, descriptor, to, length, offset);
}

class ReadingTest : public EngineTest {
protected:
    void SetUp() override
    {
        add(pages, opened("long.pdf", longPage()), {0});
        add(pages, opened("photo.jpg", pdf::madeJpeg({900, 600}, 3)), {0});
    }

    BuildPlan pages;
};

TEST_F(ReadingTest, AReadThatFailsNeverGivesATornCopyAndTheNextOneIsWhole)
{
    const QByteArray whole = engine.build(pages);
    {
        const ReadHook counting([](int) { return false; });
        engine.build(pages);
    }
    const int reads = readCount;
    ASSERT_GT(reads, 20);
    int known = 0;
    for (int failing = 0; failing < reads; ++failing) {
        try {
            const ReadHook hook([failing](int read) { return read == failing; });
            engine.build(pages);
            FAIL() << "read " << failing;
        } catch (const EngineError& error) {
            known += error.cause() && std::string(error.what()).starts_with("missing page: ");
        }
        EXPECT_EQ(engine.build(pages).size(), whole.size()) << "after read " << failing;
    }
    EXPECT_GT(known, 0) << "what was thrown beneath is told";
    const PageSource source = pages.pages[0].source;
    const ReadHook none([](int) { return true; });
    EXPECT_FALSE(engine.image(source, 0, 100).has_value());
    engine.forget(source.url);
    EXPECT_EQ(engine.open(source.url).systemError, EIO);
}

TEST(EngineErrors, HaveCausesOfAnyKind)
{
    const EngineError error(EngineError::Kind::WriteFailed, std::make_exception_ptr(1));
    EXPECT_STREQ(error.what(), "write failed");
    EXPECT_THROW(std::rethrow_exception(error.cause()), int);
}

TEST_F(ReadingTest, AStopAtAnyReadEndsTheBuildAndNothingElse)
{
    pages.password = "locked";
    pages.quality = CompressionStep{400, 0.55, false};
    for (int stopping = 0;; ++stopping) {
        std::stop_source stop;
        const ReadHook hook([&stop, stopping](int read) {
            if (read == stopping)
                stop.request_stop();
            return false;
        });
        try {
            engine.build(pages, stop.get_token());
            ASSERT_LE(readCount, stopping) << "the stop was not heard";
            break;
        } catch (const Cancelled&) {
        }
    }
}

} // namespace folvane
