#include "pdf/salvage/salvageSyntax.h"

#include <algorithm>
#include <array>

namespace folvane::pdf::salvage {

namespace {

using Kind = Token::Kind;

constexpr size_t deepestNesting = 500;
constexpr qsizetype longestInteger = 18; // characters

bool isRegular(char c)
{
    return !isSpace(c) && !isDelimiter(c);
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool looksLikeInteger(QByteArrayView text)
{
    const bool isSigned = text.front() == '-' || text.front() == '+';
    return text.size() > (isSigned ? 1 : 0)
           && std::all_of(text.begin() + (isSigned ? 1 : 0), text.end(), isDigit);
}

/// Inside a value such a word shows that the rest of the value is lost.
bool standsBetweenObjects(QByteArrayView word)
{
    static constexpr std::array<QByteArrayView, 7> words = {"obj",  "endobj",  "stream",   "endstream",
                                                            "xref", "trailer", "startxref"};
    return std::find(words.begin(), words.end(), word) != words.end();
}

/// Which brackets are open. A closing bracket without its opening one is passed over.
class Nesting {
public:
    bool isOpen() const { return !m_open.empty(); }
    bool isIn(Kind opening) const { return isOpen() && m_open.back() == opening; }
    bool isTooDeep() const { return m_open.size() > deepestNesting; }

    void take(Kind kind)
    {
        if (kind == Kind::ArrayBegin || kind == Kind::DictionaryBegin)
            m_open.push_back(kind);
        else if (kind == Kind::ArrayEnd && isIn(Kind::ArrayBegin))
            m_open.pop_back();
        else if (kind == Kind::DictionaryEnd)
            closeDictionary();
    }

private:
    void closeDictionary()
    {
        const auto innermost = std::find(m_open.rbegin(), m_open.rend(), Kind::DictionaryBegin);
        if (innermost != m_open.rend())
            m_open.erase(innermost.base() - 1, m_open.end());
    }

    std::vector<Kind> m_open;
};

bool isTooLong(const Token& token)
{
    return token.kind == Kind::Integer && token.text.size() > longestInteger;
}

bool endsValue(const Token& token)
{
    return token.kind == Kind::End || isTooLong(token)
           || (token.kind == Kind::Word && standsBetweenObjects(token.text));
}

bool isHexDigit(char c)
{
    return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

bool isSoundString(QByteArrayView string)
{
    return string.front() == '(' || std::all_of(string.begin() + 1, string.end() - 1, [](char c) {
               return isHexDigit(c) || isSpace(c);
           });
}

bool isSoundWord(QByteArrayView word)
{
    const bool isReal =
        std::all_of(word.begin(), word.end(), [](char c) { return isDigit(c) || c == '.' || c == '-'; });
    return isReal || word == "true" || word == "false" || word == "null" || word == "R";
}

bool isSoundIn(const Nesting& nesting, const Token& token)
{
    switch (token.kind) {
    case Kind::Word: return isSoundWord(token.text);
    case Kind::String: return isSoundString(token.text);
    case Kind::ArrayEnd: return nesting.isIn(Kind::ArrayBegin);
    case Kind::DictionaryEnd: return nesting.isIn(Kind::DictionaryBegin);
    case Kind::End:
    case Kind::Integer:
    case Kind::Name:
    case Kind::ArrayBegin:
    case Kind::DictionaryBegin: break;
    }
    return true;
}

/// Where "G R" ends behind a number, or nothing. Looks ahead a little only, or long strings would be read
/// twice.
std::optional<qsizetype> endOfReference(QByteArrayView text, qsizetype at)
{
    Tokens tokens(text.first(std::min<qsizetype>(text.size(), at + 64)), at);
    if (tokens.next().kind != Kind::Integer)
        return {};
    const Token last = tokens.next();
    return last.text == "R" ? std::optional(tokens.position()) : std::nullopt;
}

QByteArrayView between(QByteArrayView text, const char* begin, qsizetype end)
{
    const qsizetype from = begin - text.data();
    return text.sliced(from, end - from);
}

ReadValue readContainer(QByteArrayView text, const Token& opening, Tokens& tokens)
{
    Nesting nesting;
    nesting.take(opening.kind);
    while (nesting.isOpen()) {
        const Token token = tokens.next();
        if (endsValue(token))
            return {{}, tokens.position()};
        nesting.take(token.kind);
        if (nesting.isTooDeep())
            return {{}, tokens.position()};
    }
    return {between(text, opening.text.data(), tokens.position()), tokens.position()};
}

} // namespace

bool isSpace(char c)
{
    return c == ' ' || c == '\n' || c == '\r' || c == '\t' || c == '\f' || c == '\0';
}

bool isDelimiter(char c)
{
    return c != '\0' && QByteArrayView("()<>[]{}/%").contains(c);
}

void Tokens::skipSpace()
{
    bool inComment = false;
    for (; m_at < m_text.size(); ++m_at) {
        const char c = m_text[m_at];
        if (c == '%')
            inComment = true;
        else if (c == '\n' || c == '\r')
            inComment = false;
        else if (!inComment && !isSpace(c))
            return;
    }
}

Token Tokens::taken(Kind kind, qsizetype length)
{
    const Token token{kind, m_text.sliced(m_at, length)};
    m_at += length;
    return token;
}

Token Tokens::next()
{
    skipSpace();
    if (m_at >= m_text.size())
        return {};
    const char following = m_at + 1 < m_text.size() ? m_text[m_at + 1] : '\0';
    switch (m_text[m_at]) {
    case '(': return string();
    case '<': return following == '<' ? taken(Kind::DictionaryBegin, 2) : hexString();
    case '>': return following == '>' ? taken(Kind::DictionaryEnd, 2) : taken(Kind::Word, 1);
    case '[': return taken(Kind::ArrayBegin, 1);
    case ']': return taken(Kind::ArrayEnd, 1);
    case ')':
    case '{':
    case '}': return taken(Kind::Word, 1);
    default: return regular();
    }
}

Token Tokens::string()
{
    qsizetype depth = 0;
    for (qsizetype i = m_at; i < m_text.size(); ++i) {
        const char c = m_text[i];
        if (c == '\\')
            ++i;
        else if (c == '(')
            ++depth;
        else if (c == ')' && --depth == 0)
            return taken(Kind::String, i + 1 - m_at);
    }
    m_at = m_text.size();
    return {};
}

Token Tokens::hexString()
{
    const qsizetype end = m_text.indexOf('>', m_at);
    if (end >= 0)
        return taken(Kind::String, end + 1 - m_at);
    m_at = m_text.size();
    return {};
}

Token Tokens::regular()
{
    const auto from = m_text.begin() + m_at;
    const bool isName = *from == '/';
    const auto end = std::find_if_not(from + (isName ? 1 : 0), m_text.end(), isRegular);
    const QByteArrayView text = m_text.sliced(m_at, end - from);
    if (isName)
        return taken(Kind::Name, text.size());
    return taken(looksLikeInteger(text) ? Kind::Integer : Kind::Word, text.size());
}

ReadValue readValue(QByteArrayView text, qsizetype at)
{
    Tokens tokens(text, at);
    const Token first = tokens.next();
    switch (first.kind) {
    case Kind::ArrayBegin:
    case Kind::DictionaryBegin: return readContainer(text, first, tokens);
    case Kind::Integer: {
        if (isTooLong(first))
            return {{}, tokens.position()};
        const qsizetype end = endOfReference(text, tokens.position()).value_or(tokens.position());
        return {between(text, first.text.data(), end), end};
    }
    case Kind::Name:
    case Kind::String: return {first.text, tokens.position()};
    case Kind::Word:
        return {standsBetweenObjects(first.text) ? QByteArrayView() : first.text, tokens.position()};
    case Kind::End:
    case Kind::ArrayEnd:
    case Kind::DictionaryEnd: break;
    }
    return {{}, tokens.position()};
}

Dictionary::Dictionary(QByteArrayView value)
{
    Tokens tokens(value);
    if (tokens.next().kind != Kind::DictionaryBegin)
        return;
    for (Token key = tokens.next(); key.kind != Kind::End && key.kind != Kind::DictionaryEnd;
         key = tokens.next()) {
        if (key.kind != Kind::Name)
            continue;
        const ReadValue read = readValue(value, tokens.position());
        if (read.value.isEmpty()) // a key without a value: what follows is the end
            return;
        m_entries.push_back({key.text, read.value});
        tokens = Tokens(value, read.reached);
    }
}

QByteArrayView Dictionary::value(QByteArrayView key) const
{
    const auto entry =
        std::find_if(m_entries.rbegin(), m_entries.rend(), [&](const Entry& e) { return e.key == key; });
    return entry == m_entries.rend() ? QByteArrayView() : entry->value;
}

std::optional<qint64> asInteger(QByteArrayView value)
{
    bool ok = false;
    const qint64 number = value.toLongLong(&ok);
    return ok ? std::optional(number) : std::nullopt;
}

std::optional<Reference> asReference(QByteArrayView value)
{
    Tokens tokens(value);
    const auto number = asInteger(tokens.next().text);
    const auto generation = asInteger(tokens.next().text);
    if (!number || !generation || tokens.next().text != "R")
        return {};
    if (*number <= 0 || *number > highestObjectNumber || *generation < 0 || *generation > 65535)
        return {};
    return Reference{int(*number), int(*generation)};
}

bool isSound(QByteArrayView value)
{
    Nesting nesting;
    Tokens tokens(value);
    for (Token token = tokens.next(); token.kind != Kind::End; token = tokens.next()) {
        if (!isSoundIn(nesting, token))
            return false;
        nesting.take(token.kind);
    }
    return !nesting.isOpen();
}

QByteArray asText(Reference id)
{
    return QByteArray::number(id.number) + ' ' + QByteArray::number(id.generation) + " R";
}

std::vector<QByteArrayView> asArray(QByteArrayView value)
{
    std::vector<QByteArrayView> items;
    if (!value.startsWith('['))
        return items;
    const QByteArrayView inside = value.sliced(1);
    ReadValue read = readValue(inside, 0);
    for (; !read.value.isEmpty(); read = readValue(inside, read.reached))
        items.push_back(read.value);
    return items;
}

} // namespace folvane::pdf::salvage
