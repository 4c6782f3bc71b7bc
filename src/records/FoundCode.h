#pragma once

#include "records/CodeSymbology.h"

#include <QHashFunctions>
#include <QString>
#include <QUuid>

#include <optional>

namespace folvane {

/// A code that was read, as its card shows it.
struct FoundCode {
    QUuid id;        ///< another one for each code: equal payloads of two reads are two cards
    QString payload; ///< never empty
    CodeSymbology symbology = CodeSymbology::Other;
    QString origin;          ///< the file's name, or what stands for the clipboard
    std::optional<int> page; ///< from 1, for pages of a PDF only

    bool operator==(const FoundCode&) const = default;
};

inline size_t qHash(const FoundCode& code, size_t seed = 0)
{
    return qHashMulti(seed, code.id, code.payload, int(code.symbology), code.origin, code.page.value_or(0));
}

} // namespace folvane
