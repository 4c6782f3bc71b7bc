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

bool isEmojiPart(UChar32 c)
{
    return u_hasBinaryProperty(c, UCHAR_EXTENDED_PICTOGRAPHIC) || c == emojiStyle
           || u_hasBinaryProperty(c, UCHAR_EMOJI_MODIFIER);
}

/// As names of the web may hold joiners: RFC 5892, appendix A.1 and A.2.
bool joins(UChar32 c)
{
    return u_getCombiningClass(c) == virama
           || u_getIntPropertyValue(c, UCHAR_JOINING_TYPE) != U_JT_NON_JOINING;
}

/// What cannot be seen but changes how the character before it looks.
bool belongsTo(UChar32 previous, UChar32 c)
{
    switch (c) {
    case zeroWidthJoiner: return isEmojiPart(previous) || joins(previous);
    case zeroWidthNonJoiner: return joins(previous);
    case textStyle:
    case emojiStyle: return u_isgraph(previous);
    default: return false;
    }
}

bool canBeSeen(UChar32 c)
{
    const QChar::Category category = QChar::category(char32_t(c));
    return QChar::isPrint(char32_t(c)) && category != QChar::Separator_Line
           && category != QChar::Separator_Paragraph
           && !u_hasBinaryProperty(c, UCHAR_DEFAULT_IGNORABLE_CODE_POINT);
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
        if (endsLine || c == u'\n')
            append(pieces, QStringLiteral("\n"), endsLine ? QStringLiteral("\r\n") : QStringLiteral("\n"));
        else if (canBeSeen(c) || belongsTo(previous, c))
            append(pieces, textOf(c), textOf(c));
        else
            pieces.push_back({nameOf(c), textOf(c), true});
        previous = c;
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
