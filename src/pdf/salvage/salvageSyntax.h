#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <optional>
#include <vector>

/// The little of the PDF syntax that is needed to find objects in a file without a cross-reference. Nothing
/// throws, nothing recurses, and views point into the text that was given.
namespace folvane::pdf::salvage {

/// As ISO 32000-1, annex C, has it; there is room above for objects that are made anew.
constexpr qint64 highestObjectNumber = 8'388'607;

struct Reference {
    int number = 0;
    int generation = 0;
    bool operator==(const Reference&) const = default;
};

struct Token {
    enum class Kind {
        End,
        Integer,
        Word,
        Name,
        String,
        ArrayBegin,
        ArrayEnd,
        DictionaryBegin,
        DictionaryEnd
    };
    Kind kind = Kind::End;
    QByteArrayView text;
};

/// Reads one token after the other, leniently. A string without an end is the end of the text.
class Tokens {
public:
    explicit Tokens(QByteArrayView text, qsizetype at = 0) : m_text(text), m_at(at) {}

    Token next();
    /// Just behind the last token.
    qsizetype position() const { return m_at; }

private:
    void skipSpace();
    Token taken(Token::Kind kind, qsizetype length);
    Token string();
    Token hexString();
    Token regular();

    QByteArrayView m_text;
    qsizetype m_at;
};

struct Entry {
    QByteArrayView key; // with its slash
    QByteArrayView value;
};

class Dictionary {
public:
    Dictionary() = default;
    /// Empty when the value is no dictionary.
    explicit Dictionary(QByteArrayView value);

    /// The last value under a key, empty when there is none.
    QByteArrayView value(QByteArrayView key) const;
    const std::vector<Entry>& entries() const { return m_entries; }

private:
    std::vector<Entry> m_entries;
};

struct ReadValue {
    QByteArrayView value; // empty when it is cut off, or when a word follows that stands only between objects
    qsizetype reached = 0;
};

/// The value that begins at or behind `at`. Nesting above 500 counts as cut off, and so does a value with a
/// whole number of 19 digits in it, which would make qpdf throw wherever it meets the value.
ReadValue readValue(QByteArrayView text, qsizetype at);

std::optional<qint64> asInteger(QByteArrayView value);
std::optional<Reference> asReference(QByteArrayView value);
/// The values in an array, empty when it is none.
std::vector<QByteArrayView> asArray(QByteArrayView value);

/// Whether a stricter reader takes the value as it stands: brackets match, every word has a meaning, and
/// strings and numbers are well formed.
bool isSound(QByteArrayView value);

/// "N G R"
QByteArray asText(Reference id);

bool isSpace(char c);
bool isDelimiter(char c);

} // namespace folvane::pdf::salvage
