#include "pdf/Document.h"

#include "pdf/OpeningInput.h"
#include "pdf/openingBounds.h"
#include "pdf/passwords.h"
#include "pdf/salvage/Salvage.h"
#include "pdf/structure/DocumentData.h"
#include "pdf/structure/boundedDecoding.h"

#include <functional>

namespace folvane::pdf {

namespace {

constexpr qint64 salvageLimit = 256LL * 1024 * 1024; // a copy in memory, so not for files of any size

/// Hands the file to an empty QPDF with one password; throws what qpdf throws.
using Reader = std::function<void(QPDF&, const char* password)>;

struct Attempt {
    Opening::Outcome outcome = Opening::Outcome::Unreadable;
    std::unique_ptr<DocumentData> data;
    bool locksAttachmentsOnly = false;
};

/// Streams and strings stand there as without encryption (ISO 32000-2, 7.6.6).
bool locksAttachmentsOnly(QPDF& qpdf)
{
    QPDFObjectHandle encryption = qpdf.getTrailer().getKey("/Encrypt");
    if (!encryption.isDictionary())
        return false;
    QPDFObjectHandle version = encryption.getKey("/V");
    return version.isInteger() && version.getIntValue() >= 4
           && encryption.getKey("/StmF").isNameAndEquals("/Identity")
           && encryption.getKey("/StrF").isNameAndEquals("/Identity");
}

Attempt attempt(const Reader& read, const std::string& password)
{
    const std::shared_ptr<QPDF> qpdf = QPDF::create();
    try {
        qpdf->setSuppressWarnings(true);
        read(*qpdf, password.c_str());
        return {Opening::Outcome::Opened, documentData(qpdf)};
    } catch (const QPDFExc& error) {
        if (error.getErrorCode() == qpdf_e_password)
            return {Opening::Outcome::Locked, nullptr, locksAttachmentsOnly(*qpdf)};
    } catch (const std::exception&) {
        // Damage shows in many types, some of them not the library's own.
    }
    return {};
}

/// With any key: nothing that is read needs the right one.
Attempt attemptWithoutAttachments(const Reader& read)
{
    const Reader readWithKey = [&read](QPDF& qpdf, const char* key) {
        qpdf.setPasswordIsHexKey(true);
        read(qpdf, key);
    };
    Attempt result = attempt(readWithKey, std::string(64, '0'));
    if (result.data)
        result.data->attachmentsAreLocked = true;
    return result;
}

/// An object of qpdf's that met a wrong password is spent, so each password gets a fresh one.
Attempt attemptAll(const Reader& read, const std::vector<std::string>& passwords)
{
    Attempt last;
    for (const std::string& password : passwords) {
        last = attempt(read, password);
        if (last.outcome != Opening::Outcome::Locked)
            return last;
    }
    return last.locksAttachmentsOnly ? attemptWithoutAttachments(read) : std::move(last);
}

bool hasPages(const Attempt& attempt)
{
    return attempt.data && !attempt.data->pages.empty();
}

Attempt attemptBytes(const QByteArray& bytes, const std::vector<std::string>& passwords)
{
    Attempt result = attemptAll(
        [&](QPDF& qpdf, const char* password) {
            qpdf.processMemoryFile("source", bytes.constData(), static_cast<size_t>(bytes.size()), password);
        },
        passwords);
    if (result.data)
        result.data->bytes = bytes; // shares the buffer that qpdf goes on reading
    return result;
}

Attempt attemptSalvaged(const SourceFile& file, const std::vector<std::string>& passwords)
{
    const std::optional<QByteArray> bytes = salvaged(file.readAll(salvageLimit), passwords);
    return bytes ? attemptBytes(*bytes, passwords) : Attempt();
}

Attempt attemptFile(const std::shared_ptr<const SourceFile>& file, const std::vector<std::string>& passwords,
                    const std::stop_token& stop)
{
    Attempt result = attemptAll(
        [&](QPDF& qpdf, const char* password) {
            const auto input = std::make_shared<OpeningInput>(file, stop);
            qpdf.processInputSource(input, password);
            input->endOpening();
        },
        passwords);
    if (result.data)
        result.data->readsFileAsItIs = !result.data->qpdf->isEncrypted() && !result.data->qpdf->anyWarnings();
    return result;
}

} // namespace

Opening Document::open(std::shared_ptr<const SourceFile> file, const std::optional<QString>& password,
                       std::stop_token stop)
{
    boundDecoding();
    std::vector<std::string> passwords{std::string()};
    if (password)
        passwords = passwordsForOpening(*password);
    if (!canHoldPdf(*file))
        return {};

    Attempt result;
    if (hasPlausibleReferences(*file))
        result = attemptFile(file, passwords, stop);
    const bool isLost = result.outcome != Opening::Outcome::Locked && !hasPages(result);
    if (isLost && !stop.stop_requested()) {
        Attempt rescued = attemptSalvaged(*file, passwords);
        if (rescued.outcome == Opening::Outcome::Locked || hasPages(rescued))
            result = std::move(rescued);
    }
    if (!result.data)
        return {result.outcome, nullptr};
    result.data->file = std::move(file);
    return {Opening::Outcome::Opened, std::make_unique<Document>(std::move(result.data))};
}

std::unique_ptr<Document> Document::fromBytes(const QByteArray& bytes)
{
    boundDecoding();
    Attempt result = attemptBytes(bytes, {std::string()});
    return hasPages(result) ? std::make_unique<Document>(std::move(result.data)) : nullptr;
}

} // namespace folvane::pdf
