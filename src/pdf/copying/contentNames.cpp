#include "pdf/copying/contentNames.h"

#include "pdf/structure/filterChain.h"

#include <stdexcept>
#include <string_view>
#include <vector>

namespace folvane::pdf {

namespace {

constexpr size_t decodedLimit = 64U * 1024 * 1024;

bool endsName(unsigned char c)
{
    constexpr std::string_view delimiters("()<>[]{}/%");
    return c <= ' ' || delimiters.find(static_cast<char>(c)) != std::string_view::npos;
}

int hexDigit(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

/// Whatever begins with a slash.
class NamePicker {
public:
    void take(char c)
    {
        if (!m_name.empty() && endsName(static_cast<unsigned char>(c)))
            endName();
        if (!m_name.empty() || c == '/')
            m_name += c;
    }

    void endName()
    {
        if (!m_name.empty())
            m_names.insert(m_name.find('#') == std::string::npos ? m_name : decodedName(m_name));
        m_name.clear();
    }

    NameSet& names() { return m_names; }

private:
    std::string m_name;
    NameSet m_names;
};

/// Tells what stands in comments and strings from what the operators see, as long as that can be told: the data of an
/// inline image reads like anything, and where a string does not end readers differ.
class ContentReader {
public:
    /// Whether the next byte stands outside of both.
    bool isOutside(char c)
    {
        switch (m_place) {
        case Place::Comment:
            if (c == '\n' || c == '\r')
                m_place = Place::Outside;
            return false;
        case Place::String: readString(c); return false;
        case Place::Outside: break;
        }
        readOutside(c);
        return m_place == Place::Outside;
    }

    void endStream()
    {
        endWord();
        m_isUnclear = m_isUnclear || m_place == Place::String;
        m_place = Place::Outside;
    }

    bool isUnclear() const { return m_isUnclear; }

private:
    enum class Place { Outside, Comment, String };

    void readOutside(char c)
    {
        if (!endsName(static_cast<unsigned char>(c))) {
            if (m_word.size() < 3)
                m_word += c;
            return;
        }
        endWord();
        if (c == '%')
            m_place = Place::Comment;
        if (c == '/') // the name "/BI" begins no image
            m_word = c;
        if (c == '(') {
            m_place = Place::String;
            m_depth = 1;
        }
    }

    void readString(char c)
    {
        if (m_isEscaped || c == '\\')
            m_isEscaped = !m_isEscaped;
        else if (c == '(')
            ++m_depth;
        else if (c == ')' && --m_depth == 0)
            m_place = Place::Outside;
    }

    void endWord()
    {
        m_isUnclear = m_isUnclear || m_word == "BI";
        m_word.clear();
    }

    Place m_place = Place::Outside;
    std::string m_word; // its beginning
    int m_depth = 0;
    bool m_isEscaped = false;
    bool m_isUnclear = false;
};

/// Picks the names out of the bytes that flow through.
class NameScanner : public Pipeline {
public:
    NameScanner() : Pipeline("names", nullptr) {}

    void write(const unsigned char* data, size_t length) override
    {
        m_total += length;
        if (m_total > decodedLimit)
            throw std::runtime_error(
                "too much content"); // ends the decoding: a bomb must not go on inflating
        for (size_t i = 0; i < length; ++i) {
            const char c = static_cast<char>(data[i]);
            m_all.take(c);
            m_outside.take(m_reader.isOutside(c) ? c : ' ');
        }
    }

    void finish() override
    {
        m_reader.endStream();
        m_all.endName();
        m_outside.endName();
    }

    NameSet& names() { return m_reader.isUnclear() ? m_all.names() : m_outside.names(); }

private:
    ContentReader m_reader;
    NamePicker m_outside;
    NamePicker m_all;
    size_t m_total = 0;
};

/// False when the stream cannot be decoded whole.
bool scan(QPDFObjectHandle stream, NameScanner& scanner)
{
    if (hasHugeRows(stream.getDict()))
        return false;
    try {
        bool decoded = false;
        const bool piped = stream.pipeStreamData(&scanner, &decoded, 0, qpdf_dl_generalized, true);
        scanner.finish();
        return piped && decoded;
    } catch (const std::exception&) {
        return false; // damage in a stream that is held in memory is thrown
    }
}

} // namespace

std::string decodedName(const std::string& name)
{
    std::string plain;
    for (size_t i = 0; i < name.size(); ++i) {
        const bool isEscape =
            name[i] == '#' && i + 2 < name.size() && hexDigit(name[i + 1]) >= 0 && hexDigit(name[i + 2]) >= 0;
        plain += isEscape ? static_cast<char>(16 * hexDigit(name[i + 1]) + hexDigit(name[i + 2])) : name[i];
        if (isEscape)
            i += 2;
    }
    return plain;
}

std::optional<NameSet> contentNames(QPDFObjectHandle contents)
{
    const std::vector<QPDFObjectHandle> streams =
        contents.isArray() ? contents.getArrayAsVector() : std::vector<QPDFObjectHandle>{contents};
    NameScanner scanner;
    for (const QPDFObjectHandle& stream : streams) {
        if (QPDFObjectHandle(stream).isStream() && !scan(stream, scanner))
            return std::nullopt;
    }
    return std::move(scanner.names());
}

} // namespace folvane::pdf
