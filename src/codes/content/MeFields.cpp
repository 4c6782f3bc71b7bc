#include "codes/content/MeFields.h"

#include "codes/content/characters.h"
#include "codes/content/letterCase.h"
#include "codes/content/trimmed.h"

#include <utility>

namespace folvane::codes {

// 1. A backslash goes; what follows it belongs to the key or the value, whatever it is.
// 2. A colon ends the key. All else before it belongs to the key, semicolons too.
// 3. A semicolon ends the field. All else before it belongs to the value, colons too.
// 4. The end of the text ends a value, too; a key without its colon is dropped.
MeFields::MeFields(QStringView text)
{
    QString key;
    QString value;
    bool inKey = true;
    bool isEscaped = false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        const bool isMark = !isEscaped && (c == u'\\' || c == (inKey ? u':' : u';')) && standsAlone(text, i);
        isEscaped = isMark && c == u'\\';
        if (!isMark) {
            (inKey ? key : value) += c;
        } else if (c == u':') {
            inKey = false;
        } else if (c == u';') {
            add(std::exchange(key, {}), std::exchange(value, {}));
            inKey = true;
        }
    }
    if (!inKey)
        add(key, value);
}

std::optional<QString> MeFields::find(const char* key) const
{
    const auto found = m_values.find(QLatin1String(key));
    return found == m_values.end() ? std::nullopt : std::optional(*found);
}

void MeFields::add(const QString& key, const QString& value)
{
    const QString name = upperCase(trimmed(key, isBlank));
    if (name.isEmpty())
        return;
    const auto there = m_values.find(name);
    if (there == m_values.end())
        m_values.insert(name, value);
    else
        *there += u'\n' + value;
}

} // namespace folvane::codes
