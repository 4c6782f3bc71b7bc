#include "pdf/structure/filterChain.h"

#include "pdf/structure/emptyDocument.h"
#include "platform/tasks/Cancelled.h"

#include <cmath>
#include <stdexcept>

namespace folvane::pdf {

namespace {

constexpr size_t maxStages = 8;
constexpr double mostRowBytes = 64 << 20; // of all predictors of a stream together

/// Gathers bytes up to a limit. What it throws ends the decoding behind it.
class Gatherer : public Pipeline {
public:
    Gatherer(qint64 limit, std::stop_token stop)
        : Pipeline("bytes", nullptr), m_limit(limit), m_stop(std::move(stop))
    {
    }

    void write(const unsigned char* data, size_t length) override
    {
        if (m_bytes.size() + static_cast<qint64>(length) > m_limit || m_stop.stop_requested()) {
            m_isCut = true;
            throw std::runtime_error("more bytes than wanted");
        }
        m_bytes.append(reinterpret_cast<const char*>(data), static_cast<qsizetype>(length));
    }
    void finish() override { m_bytes.squeeze(); }

    bool isCut() const { return m_isCut; }
    QByteArray take() { return std::move(m_bytes); }

private:
    qint64 m_limit;
    std::stop_token m_stop;
    QByteArray m_bytes;
    bool m_isCut = false; // the library may keep to itself what write() throws
};

std::string fullName(const std::string& name)
{
    static const std::unordered_map<std::string, std::string> names{
        {"/AHx", "/ASCIIHexDecode"}, {"/A85", "/ASCII85Decode"},  {"/LZW", "/LZWDecode"},
        {"/Fl", "/FlateDecode"},     {"/RL", "/RunLengthDecode"}, {"/CCF", "/CCITTFaxDecode"},
        {"/DCT", "/DCTDecode"}};
    const auto found = names.find(name);
    return found == names.end() ? name : found->second;
}

bool isStandard(const std::string& name)
{
    static const std::unordered_set<std::string> names{
        "/ASCIIHexDecode", "/ASCII85Decode", "/LZWDecode", "/FlateDecode", "/RunLengthDecode",
        "/CCITTFaxDecode", "/JBIG2Decode",   "/DCTDecode", "/JPXDecode"};
    return names.count(name) > 0;
}

std::vector<QPDFObjectHandle> asList(QPDFObjectHandle value)
{
    if (value.isArray())
        return value.getArrayAsVector();
    return value.isNull() ? std::vector<QPDFObjectHandle>() : std::vector<QPDFObjectHandle>{value};
}

/// Only what the plain stages need: other parameters may refer to streams.
std::string parameterText(QPDFObjectHandle parameters)
{
    if (!parameters.isDictionary())
        return "null";
    std::string text = "<<";
    for (const char* key : {"/Predictor", "/Colors", "/BitsPerComponent", "/Columns", "/EarlyChange"}) {
        if (QPDFObjectHandle value = parameters.getKey(key); value.isInteger())
            text += std::string(key) + " " + std::to_string(value.getIntValue()) + " ";
    }
    return text + ">>";
}

/// In floating point: the numbers may be any.
double rowBytes(QPDFObjectHandle parameters)
{
    const auto number = [&](const char* key, long long otherwise) {
        QPDFObjectHandle value = parameters.getKey(key);
        return static_cast<double>(value.isInteger() ? value.getIntValue() : otherwise);
    };
    if (!parameters.isDictionary() || number("/Predictor", 1) <= 1)
        return 0;
    return number("/Columns", 1) * number("/Colors", 1) * number("/BitsPerComponent", 8) / 8;
}

template <typename Access> QPDFObjectHandle joined(const FilterChain& stages, Access access)
{
    QPDFObjectHandle array = QPDFObjectHandle::newArray();
    for (const FilterStage& stage : stages)
        array.appendItem(access(stage));
    return array;
}

} // namespace

bool hasHugeRows(QPDFObjectHandle streamDictionary)
{
    double bytes = 0;
    for (const QPDFObjectHandle& parameters : asList(streamDictionary.getKey("/DecodeParms")))
        bytes += std::abs(rowBytes(parameters));
    return bytes > mostRowBytes;
}

std::optional<FilterChain> filterChain(QPDFObjectHandle stream)
{
    QPDFObjectHandle dictionary = stream.getDict();
    const std::vector<QPDFObjectHandle> filters = asList(dictionary.getKey("/Filter"));
    const std::vector<QPDFObjectHandle> parameters = asList(dictionary.getKey("/DecodeParms"));
    if (filters.size() > maxStages || hasHugeRows(dictionary))
        return std::nullopt;
    FilterChain chain;
    for (size_t i = 0; i < filters.size(); ++i) {
        QPDFObjectHandle filter = filters[i];
        const std::string name = filter.isName() ? fullName(filter.getName()) : std::string();
        if (!isStandard(name))
            return std::nullopt;
        chain.push_back({name, i < parameters.size() ? parameterText(parameters[i]) : "null"});
    }
    return chain;
}

bool isPlain(const FilterStage& stage)
{
    return stage.name == "/FlateDecode" || stage.name == "/LZWDecode" || stage.name == "/RunLengthDecode"
           || stage.name == "/ASCIIHexDecode" || stage.name == "/ASCII85Decode";
}

std::optional<QByteArray> storedBytes(QPDFObjectHandle stream, qint64 limit, const std::stop_token& stop)
{
    Gatherer gatherer(limit, stop);
    bool filtered = false;
    bool isWhole = false;
    try {
        // Not filtering counts as success here.
        stream.pipeStreamData(&gatherer, &filtered, 0, qpdf_dl_none, true);
        isWhole = !gatherer.isCut();
    } catch (const std::exception&) {
        isWhole = false; // a source that was cut meanwhile
    }
    throwIfStopped(stop);
    return isWhole ? std::optional(gatherer.take()) : std::nullopt;
}

// A document of its own for each call, so that calls on many threads share nothing.
bool unpack(const QByteArray& bytes, const FilterChain& stages, Pipeline& taker)
{
    try {
        const std::shared_ptr<QPDF> document = emptyDocument();
        QPDFObjectHandle stream = document->newStream();
        stream.replaceStreamData(
            [&bytes](Pipeline* pipeline) {
                pipeline->write(reinterpret_cast<const unsigned char*>(bytes.constData()),
                                static_cast<size_t>(bytes.size()));
                pipeline->finish();
            },
            joined(stages, [](const FilterStage& stage) { return QPDFObjectHandle::newName(stage.name); }),
            joined(stages,
                   [](const FilterStage& stage) { return QPDFObjectHandle::parse(stage.parameters); }));
        bool filtered = false;
        const bool piped = stream.pipeStreamData(&taker, &filtered, 0, qpdf_dl_specialized, true);
        return piped && (filtered || stages.empty()) && !document->anyWarnings();
    } catch (const std::exception&) {
        return false; // damage, or a taker that has enough
    }
}

std::optional<QByteArray> unpacked(const QByteArray& bytes, const FilterChain& stages, qint64 limit,
                                   const std::stop_token& stop)
{
    if (stages.empty())
        return bytes;
    Gatherer gatherer(limit, stop);
    if (!unpack(bytes, stages, gatherer) || gatherer.isCut())
        return std::nullopt;
    return gatherer.take();
}

} // namespace folvane::pdf
