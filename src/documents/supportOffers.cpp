#include "documents/AppModel.h"
#include "platform/desktop/Preferences.h"
#include "platform/tasks/Clock.h"
#include "platform/tasks/spawn.h"

#include <QDateTime>

namespace folvane {

namespace {

using namespace std::chrono_literals;

const QString offeredKey = QStringLiteral("support.offeredAfterFirstResult");
const QString savedFilesKey = QStringLiteral("friend.savedFiles");
const QString friendStateKey = QStringLiteral("friend.state");
const QString friendAskedAtKey = QStringLiteral("friend.askedAt");

constexpr auto untilTheResultWasSeen = 900ms;
constexpr int fewestSavedFiles = 3;
constexpr qint64 secondsBetweenRequests = 2'592'000; // 30 days

/// Whether a friend may be asked for now, and what to remember of it: "later" after the first time, "done" after the second.
std::optional<QString> nextFriendState(const Preferences& preferences, const QDateTime& now)
{
    const QVariant state = preferences.value(friendStateKey);
    if (!state.isValid())
        return QStringLiteral("later");
    const QDateTime askedAt = preferences.value(friendAskedAtKey).toDateTime();
    const bool isDue = state.toString() == QLatin1String("later") && askedAt.isValid()
                       && askedAt.secsTo(now) >= secondsBetweenRequests;
    return isDue ? std::optional(QStringLiteral("done")) : std::nullopt;
}

} // namespace

void AppModel::countSavedFiles(qsizetype count)
{
    Preferences& preferences = m_services.preferences;
    preferences.setValue(savedFilesKey, preferences.value(savedFilesKey, 0).toInt() + int(count));
}

// Once ever. Where something else is up when it comes, it is lost for good: it would only be in the way.
void AppModel::offerSupportOnce()
{
    Preferences& preferences = m_services.preferences;
    if (preferences.value(offeredKey, false).toBool())
        return;
    preferences.setValue(offeredKey, true);
    m_offeredSupport = true;
    spawn(offer(SupportPrompt::AfterFirstResult));
}

// One request in a run of the program is enough.
void AppModel::offerFriendIfDue()
{
    Preferences& preferences = m_services.preferences;
    if (m_offeredSupport || preferences.value(savedFilesKey, 0).toInt() < fewestSavedFiles)
        return;
    const QDateTime now = m_services.clock.date();
    const std::optional<QString> state = nextFriendState(preferences, now);
    if (!state)
        return;
    preferences.setValue(friendStateKey, *state);
    preferences.setValue(friendAskedAtKey, now);
    spawn(offer(SupportPrompt::TellAFriend));
}

QCoro::Task<> AppModel::offer(SupportPrompt prompt)
{
    const std::stop_token ended = m_end.get_token();
    co_await m_services.clock.sleep(untilTheResultWasSeen, ended);
    if (!ended.stop_requested() && !asksTheUser())
        support = prompt;
}

bool AppModel::asksTheUser() const
{
    return support.value() || sheet.value() || passwordRequest.value() || errorMessage.value()
           || closingFile.value() || busy.value();
}

void AppModel::answerFriend()
{
    m_services.preferences.setValue(friendStateKey, QStringLiteral("done"));
}

} // namespace folvane
