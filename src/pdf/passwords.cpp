#include "pdf/passwords.h"

#include "pdf/structure/qpdfInclude.h"

#include <unicode/usprep.h>

#include <algorithm>
#include <memory>
#include <optional>

namespace folvane::pdf {

namespace {

constexpr size_t significantBytes = 127;

std::optional<QString> saslPrepared(const QString& text)
{
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<UStringPrepProfile, decltype(&usprep_close)> profile(
        usprep_openByType(USPREP_RFC4013_SASLPREP, &status), usprep_close);
    if (U_FAILURE(status))
        return std::nullopt;
    QString prepared(4 * text.size() + 16, Qt::Uninitialized); // normalisation can lengthen a text
    const int32_t length =
        usprep_prepare(profile.get(), reinterpret_cast<const UChar*>(text.utf16()),
                       static_cast<int32_t>(text.size()), reinterpret_cast<UChar*>(prepared.data()),
                       static_cast<int32_t>(prepared.size()), USPREP_ALLOW_UNASSIGNED, nullptr, &status);
    if (U_FAILURE(status) || length > prepared.size())
        return std::nullopt;
    prepared.truncate(length);
    return prepared;
}

std::string significant(const QString& text)
{
    const std::string utf8 = text.toStdString();
    // The library takes C strings, so nothing behind a NUL could count.
    return utf8.substr(0, std::min(utf8.find('\0'), significantBytes));
}

} // namespace

std::string passwordForWriting(const QString& password)
{
    const std::string prepared = significant(saslPrepared(password).value_or(password));
    return prepared.empty() ? significant(password) : prepared;
}

std::vector<std::string> passwordsForOpening(const QString& password)
{
    std::vector<std::string> candidates{significant(password), passwordForWriting(password)};
    for (const std::string& encoded : QUtil::possible_repaired_encodings(password.toStdString()))
        candidates.push_back(encoded.substr(0, significantBytes));

    std::vector<std::string> distinct;
    for (std::string& candidate : candidates) {
        if (std::find(distinct.begin(), distinct.end(), candidate) == distinct.end())
            distinct.push_back(std::move(candidate));
    }
    return distinct;
}

} // namespace folvane::pdf
