#include "documents/failures.h"

#include "engine/EngineError.h"
#include "platform/files/writeFile.h"
#include "platform/tasks/Cancelled.h"
#include "stamps/StampMaker.h"

namespace folvane {

QCoro::Task<std::optional<QString>> failureOf(Job work, std::stop_token stop, QString otherwise)
{
    try {
        QCoro::Task<> working = work(stop);
        co_await working;
        co_return std::nullopt;
    } catch (const Cancelled&) {
        co_return std::nullopt;
    } catch (const EngineError& known) {
        co_return known.text();
    } catch (const WriteError& known) {
        co_return known.text();
    } catch (const StampMaker::StampError& known) {
        co_return known.errorDescription();
    } catch (...) {
        co_return otherwise;
    }
}

} // namespace folvane
