#pragma once

#include <QString>

#include <string>
#include <vector>

namespace folvane::pdf {

/// The bytes with which a new file is locked: SASLprep (RFC 4013), UTF-8, the first 127 bytes (ISO 32000-2, 7.6.4.3.3).
/// A password that the profile forbids, or of which it leaves nothing (a soft hyphen), is taken as it was typed. Empty
/// for an empty password.
std::string passwordForWriting(const QString& password);

/// All byte strings worth trying on an existing file, the likeliest first: as typed, prepared, and in the
/// single-byte encodings that files before AES-256 used.
std::vector<std::string> passwordsForOpening(const QString& password);

} // namespace folvane::pdf
