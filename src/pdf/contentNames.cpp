#include "pdf/contentNames.h"

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
            if (!m_name.empty() && endsName(data[i]))
                endName();
            if (!m_name.empty() || data[i] == '/')
                m_name += static_cast<char>(data[i]);
        }
    }
    void finish() override { endName(); }

    NameSet& names() { return m_names; }

private:
    void endName()
    {
        if (!m_name.empty())
            m_names.insert(m_name.find('#') == std::string::npos ? m_name : decodedName(m_name));
        m_name.clear();
    }

    std::string m_name;
    NameSet m_names;
    size_t m_total = 0;
};

/// False when the stream cannot be decoded whole.
bool scan(QPDFObjectHandle stream, NameScanner& scanner)
{
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
