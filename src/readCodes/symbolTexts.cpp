#include "readCodes/symbolTexts.h"

#include <QStringDecoder>

#include <algorithm>

namespace folvane {

namespace {

bool isDigit(char character)
{
    return character >= '0' && character <= '9';
}

bool isLetter(char character)
{
    return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z');
}

bool isUtf8(const std::string& text)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString decoded = decoder(QByteArrayView(text));
    return !decoder.hasError();
}

/// The digits, weighted 1, 3, 1, 3 … from the last one, add up to whole tens.
bool hasCheckDigit(const std::string& digits)
{
    int sum = 0;
    int weight = 1;
    for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit, weight = 4 - weight)
        sum += (*digit - '0') * weight;
    return sum % 10 == 0;
}

bool isItf14(const std::string& text)
{
    return text.size() == 14 && std::ranges::all_of(text, isDigit) && hasCheckDigit(text);
}

std::string withoutStartAndStop(const std::string& text)
{
    const bool hasBoth = text.size() > 2 && isLetter(text.front()) && isLetter(text.back());
    return hasBoth ? text.substr(1, text.size() - 2) : text;
}

} // namespace

std::optional<Symbol> settled(Symbol symbol)
{
    if (symbol.symbology == CodeSymbology::Other || symbol.text.empty() || !isUtf8(symbol.text))
        return std::nullopt;
    if (symbol.symbology == CodeSymbology::Codabar)
        symbol.text = withoutStartAndStop(symbol.text);
    if (symbol.symbology == CodeSymbology::I2of5 && isItf14(symbol.text))
        symbol.symbology = CodeSymbology::Itf14;
    return symbol;
}

} // namespace folvane
