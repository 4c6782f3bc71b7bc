#include "codes/content/Product.h"

#include "codes/content/characters.h"

#include <unicode/uchar.h>

#include <algorithm>

namespace folvane::codes {

namespace {

/// Whatever the script: it is the first code that a character has its value from.
bool isNumber(QStringView character)
{
    const QList<uint> codes = character.first(std::min<qsizetype>(character.size(), 2)).toUcs4();
    return u_getIntPropertyValue(UChar32(codes.first()), UCHAR_NUMERIC_TYPE) != U_NT_NONE;
}

Product ean13(QStringView text)
{
    if (beginsWith(text, u"978") || beginsWith(text, u"979"))
        return {text.toString(), ProductKind::Isbn};
    if (beginsWith(text, u"0"))
        return {text.sliced(1).toString(), ProductKind::UpcA};
    return {text.toString(), ProductKind::Ean13};
}

} // namespace

// 1. There are only numbers, as many as the symbology has: 13, 8, or for UPC-E 8 or 6.
// 2. EAN-13 is a book's number from 978 and 979 on, and UPC-A from 0 on, which is then left out.
std::optional<Product> product(QStringView text, CodeSymbology symbology)
{
    if (symbology != CodeSymbology::Ean13 && symbology != CodeSymbology::Ean8
        && symbology != CodeSymbology::UpcE)
        return std::nullopt;
    const QList<QStringView> digits = characters(text);
    if (!std::ranges::all_of(digits, isNumber))
        return std::nullopt;
    if (symbology == CodeSymbology::Ean13 && digits.size() == 13)
        return ean13(text);
    if (symbology == CodeSymbology::Ean8 && digits.size() == 8)
        return Product{text.toString(), ProductKind::Ean8};
    if (symbology == CodeSymbology::UpcE && (digits.size() == 8 || digits.size() == 6))
        return Product{text.toString(), ProductKind::UpcE};
    return std::nullopt;
}

} // namespace folvane::codes
