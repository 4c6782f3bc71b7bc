#pragma once

#include "records/CodeSymbology.h"

#include <QString>

#include <optional>

namespace folvane::codes {

enum class ProductKind { Ean13, Ean8, UpcA, UpcE, Isbn };

/// The number on an article of trade. Its check digit has been seen to by whoever read the code.
struct Product {
    QString number;
    ProductKind kind = ProductKind::Ean13;

    bool operator==(const Product&) const = default;
};

/// Nothing when the symbology is none of trade, or the text is not what it holds.
std::optional<Product> product(QStringView text, CodeSymbology symbology);

} // namespace folvane::codes
