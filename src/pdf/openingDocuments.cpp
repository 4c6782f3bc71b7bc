#include "pdf/Document.h"

#include "pdf/DocumentData.h"
#include "pdf/FileInput.h"
#include "pdf/Salvage.h"
#include "pdf/passwords.h"

#include <functional>

namespace folvane::pdf {

namespace {

constexpr qint64 salvageLimit = 256LL * 1024 * 1024; // a copy in memory, so not for files of any size

/// Hands the file to an empty QPDF with one password; throws what qpdf throws.
using Reader = std::function<void(QPDF&, const char* password)>;

struct Attempt {
    Opening::Outcome outcome = Opening::Outcome::Unreadable;
    std::unique_ptr<DocumentData> data;
};

Attempt attempt(const Reader& read, const std::string& password)
{
    try {
        const std::shared_ptr<QPDF> qpdf = QPDF::create();
        qpdf->setSuppressWarnings(true);
        read(*qpdf, password.c_str());
        return {Opening::Outcome::Opened, documentData(qpdf)};
    } catch (const QPDFExc& error) {
        if (error.getErrorCode() == qpdf_e_password)
            return {Opening::Outcome::Locked, nullptr};
    } catch (const std::exception&) {
        // Damage shows in many types, some of them not the library's own.
    }
    return {};
}

/// An object of qpdf's that met a wrong password is spent, so each password gets a fresh one.
Attempt attemptAll(const Reader& read, const std::vector<std::string>& passwords)
{
    Attempt last;
    for (const std::string& password : passwords) {
        last = attempt(read, password);
        if (last.outcome != Opening::Outcome::Locked)
            break;
    }
    return last;
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

} // namespace

Opening Document::open(std::shared_ptr<const SourceFile> file, const std::optional<QString>& password)
{
    std::vector<std::string> passwords{std::string()};
    if (password)
        passwords = passwordsForOpening(*password);

    Attempt result = attemptAll(
        [&](QPDF& qpdf, const char* candidate) {
            qpdf.processInputSource(std::make_shared<FileInput>(file), candidate);
        },
        passwords);
    if (result.data)
        result.data->readsFileAsItIs = !result.data->qpdf->isEncrypted() && !result.data->qpdf->anyWarnings();

    if (result.outcome != Opening::Outcome::Locked && !hasPages(result)) {
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
    Attempt result = attemptBytes(bytes, {std::string()});
    return hasPages(result) ? std::make_unique<Document>(std::move(result.data)) : nullptr;
}

} // namespace folvane::pdf
