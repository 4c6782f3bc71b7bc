#include "codes/links/punycode.h"

#include <algorithm>
#include <limits>
#include <string>

namespace folvane {

// As RFC 3492 has it, with names of our own:
//
// 1. More than 59 bytes do not decode: a label has 63, four of them "xn--".
// 2. What stands before the last hyphen, if there is one, is text in ASCII and copied as it is. Digits follow.
// 3. The digits are numbers of variable length. In each, the last digit is the first one below its threshold, which
//    the bias shifts.
// 4. A number says how far to go on, over all places of the text and, beyond its end, over all code points from
//    U+0080. There a character is put in.
// 5. The bias follows the numbers, so that those to come are short.
// 6. What overflows, ends within a number, or is no character does not decode.

namespace {

constexpr qint64 base = 36;
constexpr qint64 lowestThreshold = 1;
constexpr qint64 highestThreshold = 26;
constexpr qint64 skew = 38;
constexpr qint64 damping = 700;
constexpr qint64 firstBias = 72;
constexpr qint64 firstCodePoint = 0x80;
constexpr qint64 lastCodePoint = 0x10FFFF;
constexpr qsizetype mostBytes = 59;

bool isAscii(QChar c)
{
    return c < u'\u0080';
}

/// Or -1.
int digitOf(QChar c)
{
    if (c >= u'0' && c <= u'9')
        return c.unicode() - u'0' + 26;
    if (c >= u'a' && c <= u'z')
        return c.unicode() - u'a';
    return c >= u'A' && c <= u'Z' ? c.unicode() - u'A' : -1;
}

bool fitsProduct(qint64 a, qint64 b)
{
    return b == 0 || a <= std::numeric_limits<qint64>::max() / b;
}

/// Takes one number off the digits and adds it to `sum`.
std::optional<qint64> addNumber(qint64 sum, QStringView& digits, qint64 bias)
{
    qint64 weight = 1;
    for (qint64 position = base; !digits.isEmpty(); position += base) {
        const int digit = digitOf(digits.front());
        digits = digits.sliced(1);
        if (digit < 0 || !fitsProduct(weight, digit)
            || sum > std::numeric_limits<qint64>::max() - weight * digit)
            return std::nullopt;
        sum += weight * digit;
        const qint64 threshold = std::clamp(position - bias, lowestThreshold, highestThreshold);
        if (digit < threshold)
            return sum;
        if (!fitsProduct(weight, base - threshold))
            return std::nullopt;
        weight *= base - threshold;
    }
    return std::nullopt;
}

qint64 biasAfter(qint64 number, qint64 length, bool isFirst)
{
    qint64 delta = number / (isFirst ? damping : 2);
    delta += delta / length;
    qint64 bias = 0;
    for (; delta > (base - lowestThreshold) * highestThreshold / 2; bias += base)
        delta /= base - lowestThreshold;
    return bias + (base - lowestThreshold + 1) * delta / (delta + skew);
}

/// Puts in what the digits say.
bool insertAll(std::u32string& text, QStringView digits)
{
    qint64 codePoint = firstCodePoint;
    qint64 bias = firstBias;
    qint64 place = 0;
    for (bool isFirst = true; !digits.isEmpty(); isFirst = false) {
        const std::optional<qint64> end = addNumber(place, digits, bias);
        const qint64 length = qint64(text.size()) + 1;
        if (!end || *end / length > lastCodePoint - codePoint)
            return false;
        bias = biasAfter(*end - place, length, isFirst);
        codePoint += *end / length;
        if (QChar::isSurrogate(char32_t(codePoint)))
            return false;
        place = *end % length;
        text.insert(size_t(place++), 1, char32_t(codePoint));
    }
    return true;
}

} // namespace

std::optional<QString> decodePunycode(QStringView text)
{
    if (text.size() > mostBytes || text.toUtf8().size() > mostBytes)
        return std::nullopt;
    const qsizetype hyphen = text.lastIndexOf(u'-');
    const QStringView plain = text.first(std::max(hyphen, qsizetype(0)));
    if (!std::ranges::all_of(plain, isAscii))
        return std::nullopt;
    std::u32string decoded = plain.toString().toStdU32String();
    if (!insertAll(decoded, text.sliced(hyphen + 1)))
        return std::nullopt;
    return QString::fromStdU32String(decoded);
}

} // namespace folvane
