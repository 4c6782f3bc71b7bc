#include "pdf/DocumentWriter.h"

#include "pdf/passwords.h"
#include "platform/Cancelled.h"

namespace folvane::pdf {

namespace {

/// Gathers what is written, and ends the writing when it is no longer wanted. The writer hands over a few bytes at a
/// time, so they are collected before they are looked at.
class ByteSink : public Pipeline {
public:
    explicit ByteSink(std::stop_token stop) : Pipeline("bytes", nullptr), m_stop(std::move(stop))
    {
        m_block.reserve(blockSize);
    }

    void write(const unsigned char* data, size_t length) override
    {
        if (m_block.size() + length > blockSize)
            flush();
        if (length > blockSize)
            m_bytes.append(reinterpret_cast<const char*>(data), static_cast<qsizetype>(length));
        else
            m_block.append(reinterpret_cast<const char*>(data), length);
    }
    void finish() override {}

    QByteArray take()
    {
        flush();
        return std::move(m_bytes);
    }

private:
    static constexpr size_t blockSize = 64 * 1024;

    void flush()
    {
        throwIfStopped(m_stop);
        m_bytes.append(m_block.data(), static_cast<qsizetype>(m_block.size()));
        m_block.clear();
    }

    std::stop_token m_stop;
    std::string m_block;
    QByteArray m_bytes;
};

void lock(QPDFWriter& writer, const std::string& password)
{
    writer.setR6EncryptionParameters(password.c_str(), password.c_str(), true, true, true, true, true, true,
                                     qpdf_r3p_full, true);
}

} // namespace

QByteArray writtenDocument(QPDF& document, const PDFVersion& version, const QString& password,
                           std::stop_token stop)
{
    throwIfStopped(stop);
    ByteSink sink(stop);
    QPDFWriter writer(document);
    writer.setOutputPipeline(&sink);
    writer.setObjectStreamMode(qpdf_o_generate);
    writer.setMinimumPDFVersion(version);
    if (const std::string secret = passwordForWriting(password); !secret.empty())
        lock(writer, secret);
    try {
        writer.write();
    } catch (const std::exception&) {
        throwIfStopped(stop); // the library may wrap what the sink threw
        throw;
    }
    return sink.take();
}

} // namespace folvane::pdf
