#include "codes/content/calendarTime.h"

#include <QTimeZone>

#include <unicode/gregocal.h>
#include <unicode/timezone.h>

#include <algorithm>
#include <limits>
#include <memory>

namespace folvane::codes {

namespace {

/// Whether the text is like the shape, in which 0 stands for any ASCII digit.
bool hasShape(QStringView text, QStringView shape)
{
    const auto fits = [](QChar c, QChar wanted) {
        return wanted == u'0' ? c >= u'0' && c <= u'9' : c == wanted;
    };
    return std::ranges::equal(text, shape, fits);
}

int number(QStringView text, qsizetype at, qsizetype length)
{
    return at < text.size() ? text.sliced(at, length).toInt() : 0;
}

/// By the calendar that is used today, also for the days before it was. An hour that comes twice is meant the second time.
std::optional<QDateTime> moment(QStringView text, std::unique_ptr<icu::TimeZone> zone)
{
    UErrorCode status = U_ZERO_ERROR;
    icu::GregorianCalendar calendar(zone.release(), icu::Locale::getRoot(), status);
    calendar.setGregorianChange(std::numeric_limits<UDate>::lowest(), status);
    calendar.setLenient(false);
    calendar.clear();
    calendar.set(number(text, 0, 4), number(text, 4, 2) - 1, number(text, 6, 2), number(text, 9, 2),
                 number(text, 11, 2), number(text, 13, 2));
    const UDate milliseconds = calendar.getTime(status);
    if (U_FAILURE(status))
        return std::nullopt;
    return QDateTime::fromMSecsSinceEpoch(qint64(milliseconds), Qt::UTC);
}

std::unique_ptr<icu::TimeZone> machineZone()
{
    const icu::UnicodeString id = icu::UnicodeString::fromUTF8(QTimeZone::systemTimeZoneId().toStdString());
    return std::unique_ptr<icu::TimeZone>(icu::TimeZone::createTimeZone(id));
}

} // namespace

std::optional<QDateTime> calendarTime(QStringView text)
{
    if (hasShape(text, u"00000000T000000Z"))
        return moment(text, std::unique_ptr<icu::TimeZone>(icu::TimeZone::getGMT()->clone()));
    if (hasShape(text, u"00000000T000000") || hasShape(text, u"00000000"))
        return moment(text, machineZone());
    return std::nullopt;
}

} // namespace folvane::codes
