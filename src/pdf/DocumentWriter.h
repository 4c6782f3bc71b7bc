#pragma once

#include "pdf/structure/qpdfInclude.h"

#include <QByteArray>
#include <QString>

#include <stop_token>

namespace folvane::pdf {

/// The bytes of a document, of at least the given version. With a password it is locked by AES-256 (revision 6), user
/// and owner password being the same. Throws Cancelled, and what qpdf throws.
QByteArray writtenDocument(QPDF& document, const PDFVersion& version, const QString& password,
                           std::stop_token stop);

} // namespace folvane::pdf
