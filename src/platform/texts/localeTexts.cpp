#include "platform/texts/localeTexts.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QLocale>

#include <unicode/datefmt.h>
#include <unicode/listformatter.h>
#include <unicode/locid.h>
#include <unicode/measunit.h>
#include <unicode/numberformatter.h>
#include <unicode/timezone.h>
#include <unicode/unistr.h>

#include <array>
#include <cmath>
#include <memory>
#include <vector>

namespace folvane {

namespace {

/// The current one. The C locale speaks English.
QLocale spokenLocale()
{
    const QLocale locale;
    return locale.language() == QLocale::C ? QLocale(QLocale::English, QLocale::UnitedStates) : locale;
}

icu::Locale icuLocale()
{
    return icu::Locale(spokenLocale().name().toLatin1().constData());
}

QString fromIcu(const icu::UnicodeString& text)
{
    return QString::fromUtf16(text.getBuffer(), text.length());
}

struct Unit {
    qint64 bytes;
    int decimals;
    const char* words;
};

constexpr std::array units{
    Unit{1, 0, QT_TRANSLATE_NOOP("byteCount", "%1 bytes")},
    Unit{1'000, 0, QT_TRANSLATE_NOOP("byteCount", "%1 KB")},
    Unit{1'000'000, 1, QT_TRANSLATE_NOOP("byteCount", "%1 MB")},
    Unit{1'000'000'000, 2, QT_TRANSLATE_NOOP("byteCount", "%1 GB")},
    Unit{1'000'000'000'000, 2, QT_TRANSLATE_NOOP("byteCount", "%1 TB")},
    Unit{1'000'000'000'000'000, 2, QT_TRANSLATE_NOOP("byteCount", "%1 PB")},
};

/// The size in the unit's last decimal place, halves rounded up: whole numbers know no rounding errors.
qint64 steps(qint64 bytes, const Unit& unit)
{
    const qint64 step = unit.bytes / (unit.decimals == 0 ? 1 : unit.decimals == 1 ? 10 : 100);
    return bytes / step + (bytes % step * 2 >= step ? 1 : 0);
}

bool roundsUpToNextUnit(qint64 bytes, const Unit& unit)
{
    const qint64 perUnit = unit.decimals == 0 ? 1 : unit.decimals == 1 ? 10 : 100;
    return steps(bytes, unit) >= 1000 * perUnit;
}

QString localNumber(qint64 value, int decimals)
{
    UErrorCode status = U_ZERO_ERROR;
    const icu::UnicodeString text = icu::number::NumberFormatter::withLocale(icuLocale())
                                        .precision(icu::number::Precision::maxFraction(decimals))
                                        .scale(icu::number::Scale::powerOfTen(-decimals))
                                        .formatInt(value, status)
                                        .toString(status);
    return U_SUCCESS(status) ? fromIcu(text) : QString::number(double(value) / std::pow(10, decimals));
}

} // namespace

QString byteCount(qint64 bytes)
{
    if (bytes == 1)
        return QCoreApplication::translate("byteCount", "%1 byte").arg(localNumber(1, 0));
    size_t unit = 0;
    while (unit + 1 < units.size() && roundsUpToNextUnit(bytes, units[unit]))
        ++unit;
    const Unit& chosen = units[unit];
    return QCoreApplication::translate("byteCount", chosen.words)
        .arg(localNumber(steps(bytes, chosen), chosen.decimals));
}

QString megabytes(double megabytes)
{
    UErrorCode status = U_ZERO_ERROR;
    const icu::UnicodeString text = icu::number::NumberFormatter::withLocale(icuLocale())
                                        .unit(icu::MeasureUnit::getMegabyte())
                                        .unitWidth(UNUM_UNIT_WIDTH_SHORT)
                                        .precision(icu::number::Precision::maxFraction(2))
                                        .formatDouble(megabytes, status)
                                        .toString(status);
    return U_SUCCESS(status) ? fromIcu(text) : QString::number(megabytes) + QStringLiteral(" MB");
}

QCollator naturalOrder()
{
    QCollator order(spokenLocale());
    order.setNumericMode(true);
    return order;
}

// Not by QLocale, whose short forms leave the year to two digits, and whose long ones name the day of the week.
QString abbreviatedDate(QDate date)
{
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::DateFormat> format(
        icu::DateFormat::createInstanceForSkeleton("yMMMd", icuLocale(), status));
    if (U_FAILURE(status) || !format)
        return date.toString(Qt::ISODate);
    format->adoptTimeZone(icu::TimeZone::getGMT()->clone());
    icu::UnicodeString text;
    return fromIcu(format->format(double(QDateTime(date, QTime(12, 0), Qt::UTC).toMSecsSinceEpoch()), text));
}

// Not by QLocale, whose lists do not know that "y" becomes "e" before a Spanish i, and their like.
QString joinedNames(const QStringList& names)
{
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::ListFormatter> formatter(
        icu::ListFormatter::createInstance(icuLocale(), ULISTFMT_TYPE_AND, ULISTFMT_WIDTH_WIDE, status));
    std::vector<icu::UnicodeString> items;
    for (const QString& name : names)
        items.emplace_back(name.utf16(), int32_t(name.size()));
    icu::UnicodeString text;
    if (formatter)
        formatter->format(items.data(), int32_t(items.size()), text, status);
    return U_SUCCESS(status) && formatter ? fromIcu(text) : names.join(QStringLiteral(", "));
}

} // namespace folvane
