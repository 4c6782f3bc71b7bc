#include "codes/content/shownText.h"

#include <unicode/uchar.h>
#include <unicode/utf16.h>

namespace folvane {

namespace {

constexpr UChar32 zeroWidthNonJoiner = 0x200C;
constexpr UChar32 zeroWidthJoiner = 0x200D;
constexpr UChar32 textStyle = 0xFE0E;
constexpr UChar32 emojiStyle = 0xFE0F;
constexpr int virama = 9; // the combining class of signs that let consonants run together

bool isPictographic(UChar32 c)
{
    return u_hasBinaryProperty(c, UCHAR_EXTENDED_PICTOGRAPHIC);
}

bool isKeycapBase(UChar32 c)
{
    return (c >= '0' && c <= '9') || c == '#' || c == '*';
}

/// As names of the web may hold joiners: RFC 5892, appendix A.1 and A.2, less strict on what follows.
bool joins(UChar32 c)
{
    if (u_getCombiningClass(c) == virama)
        return true;
    const int32_t type = u_getIntPropertyValue(c, UCHAR_JOINING_TYPE);
    return type == U_JT_DUAL_JOINING || type == U_JT_LEFT_JOINING || type == U_JT_RIGHT_JOINING;
}

/// What cannot be seen but changes how the character before it looks. It never does so twice, so none can hide behind another.
bool belongsTo(UChar32 previous, UChar32 c)
{
    switch (c) {
    case zeroWidthJoiner:
        return isPictographic(previous) || previous == emojiStyle || joins(previous)
               || u_hasBinaryProperty(previous, UCHAR_EMOJI_MODIFIER);
    case zeroWidthNonJoiner: return joins(previous);
    case textStyle:
    case emojiStyle: return isPictographic(previous) || isKeycapBase(previous);
    default: return false;
    }
}

/// Blank, or nothing at all, although they count as symbols.
bool isEmptySymbol(UChar32 c)
{
    constexpr UChar32 brailleBlank = 0x2800;
    constexpr UChar32 objectReplacement = 0xFFFC;
    return c == brailleBlank || c == objectReplacement;
}

bool canBeSeen(UChar32 c)
{
    const QChar::Category category = QChar::category(char32_t(c));
    return QChar::isPrint(char32_t(c)) && category != QChar::Separator_Line
           && category != QChar::Separator_Paragraph
           && !u_hasBinaryProperty(c, UCHAR_DEFAULT_IGNORABLE_CODE_POINT) && !isEmptySymbol(c);
}

QString nameOf(UChar32 c)
{
    return QStringLiteral("U+%1").arg(uint(c), 4, 16, QLatin1Char('0')).toUpper();
}

QString textOf(UChar32 c)
{
    return QStringView(QChar::fromUcs4(char32_t(c))).toString();
}

void append(std::vector<ShownPiece>& pieces, const QString& shown, const QString& original)
{
    if (pieces.empty() || pieces.back().isMark)
        pieces.emplace_back();
    pieces.back().shown += shown;
    pieces.back().original += original;
}

} // namespace

std::vector<ShownPiece> shownText(QStringView text)
{
    const char16_t* units = text.utf16();
    std::vector<ShownPiece> pieces;
    UChar32 previous = 0;
    for (qsizetype i = 0; i < text.size();) {
        UChar32 c = 0;
        U16_NEXT(units, i, text.size(), c); // half a pair comes as it is
        const bool endsLine = c == u'\r' && i < text.size() && units[i] == u'\n';
        i += endsLine ? 1 : 0;
        const bool isShown = canBeSeen(c) || belongsTo(previous, c);
        if (endsLine || c == u'\n')
            append(pieces, QStringLiteral("\n"), endsLine ? QStringLiteral("\r\n") : QStringLiteral("\n"));
        else if (isShown)
            append(pieces, textOf(c), textOf(c));
        else
            pieces.push_back({nameOf(c), textOf(c), true});
        previous = isShown ? c : 0;
    }
    return pieces;
}

QString shownLine(QStringView text)
{
    QString line;
    for (const ShownPiece& piece : shownText(text))
        line += piece.isMark ? u'⟨' + piece.shown + u'⟩' : piece.shown;
    return line.replace(u'\n', u' ');
}

} // namespace folvane
