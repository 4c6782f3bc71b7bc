#include "pdf/structure/boundedDecoding.h"

#include "pdf/structure/lzwDecoding.h"
#include "pdf/structure/predictors.h"

#include <qpdf/Pl_Buffer.hh>
#include <qpdf/Pl_Flate.hh>
#include <qpdf/Pl_RunLength.hh>
#include <qpdf/QPDFStreamFilter.hh>

#include <algorithm>
#include <mutex>
#include <stdexcept>

namespace folvane::pdf {

namespace {

constexpr size_t alwaysGranted = size_t{8} << 20;
constexpr size_t neverGranted = size_t{64} << 20;
constexpr size_t usualRatio = 32; // objects and cross-references shrink less

/// What flows into the bounded stage, so that what comes out can be compared with it.
struct Flow {
    size_t packed = 0;
    size_t unpacked = 0;

    bool isExcessive() const
    {
        return unpacked > std::clamp(packed * usualRatio, alwaysGranted, neverGranted);
    }
};

/// Lets through what the packed data justifies.
class OutputBound : public Pipeline {
public:
    OutputBound(Pipeline* next, Flow& flow) : Pipeline("bound", next), m_flow(flow) {}

    void write(const unsigned char* data, size_t length) override
    {
        m_flow.unpacked += length;
        if (m_flow.isExcessive())
            throw std::runtime_error("a stream unpacks to more than it can be meant to");
        getNext()->write(data, length);
    }
    void finish() override { getNext()->finish(); }

private:
    Flow& m_flow;
};

/// A decoder that tells how much it was given.
template <typename Decoder> class Counting : public Decoder {
public:
    template <typename... Arguments>
    explicit Counting(Flow& flow, Arguments&&... arguments)
        : Decoder(std::forward<Arguments>(arguments)...), m_flow(flow)
    {
    }

    void write(const unsigned char* data, size_t length) override
    {
        m_flow.packed += length;
        Decoder::write(data, length);
    }

private:
    Flow& m_flow;
};

/// The library gathers by itself, maybe behind decoders that only shrink.
bool endsInTheLibrary(Pipeline* next)
{
    return dynamic_cast<Pl_Buffer*>(next) || next->getIdentifier().rfind("ascii", 0) == 0;
}

/// A filter whose stages live as long as it does.
class BoundedFilter : public QPDFStreamFilter {
public:
    Pipeline* getDecodePipeline(Pipeline* next) override
    {
        return endsInTheLibrary(next) ? decoder(keep(std::make_unique<OutputBound>(next, m_flow)))
                                      : decoder(next);
    }

protected:
    /// Makes the stages that decode into `next`; the first of them, the library's own class where it has one, for it
    /// takes warnings from that.
    virtual Pipeline* decoder(Pipeline* next) = 0;

    template <typename Decoder, typename... Arguments> Pipeline* counting(Arguments&&... arguments)
    {
        return keep(std::make_unique<Counting<Decoder>>(m_flow, std::forward<Arguments>(arguments)...));
    }

    Pipeline* keep(std::unique_ptr<Pipeline> stage) { return m_stages.emplace_back(std::move(stage)).get(); }

private:
    std::vector<std::unique_ptr<Pipeline>> m_stages;
    Flow m_flow;
};

class PredictedFilter : public BoundedFilter {
public:
    bool setDecodeParms(QPDFObjectHandle parameters) override
    {
        if (parameters.isNull())
            return true;
        if (!parameters.isDictionary())
            return false;
        long long predictor = 1;
        const bool areNumbers =
            read(parameters, "/Predictor", predictor) && read(parameters, "/Columns", m_predictor.columns)
            && read(parameters, "/Colors", m_predictor.colours)
            && read(parameters, "/BitsPerComponent", m_predictor.bits) && readOwn(parameters);
        m_predictor.predictor = static_cast<int>(std::clamp(predictor, -1LL, 16LL));
        return areNumbers && m_predictor.isBounded();
    }

protected:
    virtual bool readOwn(QPDFObjectHandle /*parameters*/) { return true; }

    /// False when there is something else than a number.
    static bool read(QPDFObjectHandle parameters, const char* key, long long& into)
    {
        QPDFObjectHandle value = parameters.getKey(key);
        if (value.isInteger())
            into = value.getIntValue();
        return value.isInteger() || value.isNull();
    }

    Pipeline* withoutPrediction(Pipeline* next)
    {
        std::unique_ptr<Pipeline> stage = undonePredictor(m_predictor, next);
        return stage ? keep(std::move(stage)) : next;
    }

private:
    PredictorParameters m_predictor;
};

class FlateFilter : public PredictedFilter {
protected:
    Pipeline* decoder(Pipeline* next) override
    {
        return counting<Pl_Flate>("flate", withoutPrediction(next), Pl_Flate::a_inflate);
    }
};

class LzwFilter : public PredictedFilter {
protected:
    bool readOwn(QPDFObjectHandle parameters) override
    {
        long long early = 1;
        const bool isNumber = read(parameters, "/EarlyChange", early);
        m_isEarly = early == 1;
        return isNumber && (early == 0 || early == 1);
    }

    Pipeline* decoder(Pipeline* next) override
    {
        return counting<LzwDecoder>(withoutPrediction(next), m_isEarly);
    }

private:
    bool m_isEarly = true;
};

class RunLengthFilter : public BoundedFilter {
public:
    bool isSpecializedCompression() override { return true; }

protected:
    Pipeline* decoder(Pipeline* next) override
    {
        return counting<Pl_RunLength>("run lengths", next, Pl_RunLength::a_decode);
    }
};

template <typename Filter> void registerFilter(const char* name)
{
    QPDF::registerStreamFilter(name, [] { return std::make_shared<Filter>(); });
}

} // namespace

void boundDecoding()
{
    static std::once_flag once;
    std::call_once(once, [] {
        registerFilter<FlateFilter>("/FlateDecode");
        registerFilter<LzwFilter>("/LZWDecode");
        registerFilter<RunLengthFilter>("/RunLengthDecode");
    });
}

} // namespace folvane::pdf
