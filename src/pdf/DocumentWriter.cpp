#include "pdf/DocumentWriter.h"

#include "pdf/passwords.h"
#include "platform/files/GatheredBytes.h"
#include "platform/tasks/Cancelled.h"

#include <new>

namespace folvane::pdf {

namespace {

/// Gathers what is written, a few bytes at a time, and lets go of all once it is no longer wanted. It never throws: the
/// library hands over the last bytes of an encryption or compression in destructors.
class ByteSink : public Pipeline {
public:
    explicit ByteSink(std::stop_token stop) : Pipeline("bytes", nullptr), m_stop(std::move(stop)) {}

    void write(const unsigned char* data, size_t length) override
    {
        if (m_unwanted)
            return;
        try {
            m_unwanted = m_stop.stop_requested();
            m_bytes.append(reinterpret_cast<const char*>(data), length);
        } catch (const std::bad_alloc&) {
            m_isFull = m_unwanted = true;
        }
    }
    void finish() override {}

    /// Throws Cancelled, and std::bad_alloc.
    QByteArray take()
    {
        throwIfStopped(m_stop);
        if (m_isFull)
            throw std::bad_alloc();
        return m_bytes.take();
    }

private:
    std::stop_token m_stop;
    GatheredBytes m_bytes;
    bool m_unwanted = false;
    bool m_isFull = false;
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
    writer.write();
    return sink.take();
}

} // namespace folvane::pdf
