#include "controls/texts/breakableText.h"

namespace folvane {

QString breakableText(QString text)
{
    constexpr QChar zeroWidthSpace(0x200b);
    constexpr qsizetype longest = 30;
    qsizetype run = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        run = text[i].isSpace() || text[i] == QChar::ReplacementCharacter ? 0 : run + 1;
        if (run >= longest && !text[i].isHighSurrogate()) {
            text.insert(++i, zeroWidthSpace);
            run = 0;
        }
    }
    return text;
}

} // namespace folvane
