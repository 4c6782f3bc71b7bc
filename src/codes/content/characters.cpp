#include "codes/content/characters.h"

#include <unicode/brkiter.h>
#include <unicode/uchar.h>
#include <unicode/utext.h>
#include <unicode/utf16.h>

#include <memory>

namespace folvane::codes {

namespace {

/// Where the characters of a text end, one after another; then its end again and again.
class CharacterBreaks {
public:
    explicit CharacterBreaks(QStringView text) : m_end(text.size())
    {
        UErrorCode status = U_ZERO_ERROR;
        m_breaks.reset(icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
        const icu::LocalUTextPointer viewed(utext_openUChars(nullptr, text.utf16(), text.size(), &status));
        if (U_SUCCESS(status))
            m_breaks->setText(viewed.getAlias(), status);
        if (U_FAILURE(status))
            qFatal("The rules of characters cannot be read: %s", u_errorName(status));
    }

    qsizetype next()
    {
        const int32_t next = m_breaks->next();
        return next == icu::BreakIterator::DONE ? m_end : next;
    }

private:
    std::unique_ptr<icu::BreakIterator> m_breaks;
    qsizetype m_end;
};

UGraphemeClusterBreak breaking(char32_t c)
{
    return UGraphemeClusterBreak(u_getIntPropertyValue(UChar32(c), UCHAR_GRAPHEME_CLUSTER_BREAK));
}

char32_t codePointBefore(QStringView text, qsizetype at)
{
    UChar32 c = 0;
    U16_PREV(text.utf16(), 0, at, c);
    return char32_t(c);
}

char32_t codePointAt(QStringView text, qsizetype at)
{
    UChar32 c = 0;
    U16_NEXT(text.utf16(), at, text.size(), c);
    return char32_t(c);
}

bool isControl(UGraphemeClusterBreak kind)
{
    return kind == U_GCB_CONTROL || kind == U_GCB_CR || kind == U_GCB_LF;
}

/// Whether a character ends before `at`, where an ASCII code stands on either side: what matters of the rules then.
bool isBoundary(QStringView text, qsizetype at)
{
    if (at == 0 || at == text.size())
        return true;
    const UGraphemeClusterBreak left = breaking(codePointBefore(text, at));
    const UGraphemeClusterBreak right = breaking(codePointAt(text, at));
    if (isControl(left) || isControl(right))
        return !(left == U_GCB_CR && right == U_GCB_LF);
    return left != U_GCB_PREPEND && right != U_GCB_EXTEND && right != U_GCB_ZWJ
           && right != U_GCB_SPACING_MARK;
}

} // namespace

QList<QStringView> characters(QStringView text)
{
    QList<QStringView> found;
    CharacterBreaks breaks(text);
    for (qsizetype start = 0; start < text.size();) {
        const qsizetype end = breaks.next();
        found.append(text.sliced(start, end - start));
        start = end;
    }
    return found;
}

QStringView withoutFirst(QStringView text, int count)
{
    CharacterBreaks breaks(text);
    qsizetype at = 0;
    for (int i = 0; i < count; ++i)
        at = breaks.next();
    return text.sliced(at);
}

bool beginsWith(QStringView text, QStringView prefix)
{
    return text.startsWith(prefix) && isBoundary(text, prefix.size());
}

bool standsAlone(QStringView text, qsizetype at)
{
    return isBoundary(text, at) && isBoundary(text, at + 1);
}

qsizetype indexOf(QStringView text, char16_t separator, qsizetype from)
{
    qsizetype at = text.indexOf(separator, from);
    while (at >= 0 && !standsAlone(text, at))
        at = text.indexOf(separator, at + 1);
    return at;
}

QList<QStringView> pieces(QStringView text, char16_t separator, qsizetype mostSplits)
{
    QList<QStringView> found;
    qsizetype start = 0;
    while (start < text.size()) {
        const qsizetype at = found.size() < mostSplits ? indexOf(text, separator, start) : -1;
        const qsizetype end = at < 0 ? text.size() : at;
        if (end > start)
            found.append(text.sliced(start, end - start));
        start = end + 1;
    }
    return found;
}

QStringView firstPiece(QStringView text, char16_t separator)
{
    const QList<QStringView> found = pieces(text, separator, 1);
    return found.isEmpty() ? QStringView() : found.first();
}

} // namespace folvane::codes
