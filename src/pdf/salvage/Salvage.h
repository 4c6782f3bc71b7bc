#pragma once

#include <QByteArray>

#include <optional>
#include <string>
#include <vector>

namespace folvane::pdf {

/// Bytes that qpdf can open, made from a damaged file: a header, a copy of `bytes`, then the objects of
/// object streams as plain ones, what had to be made anew of the page tree, and a cross-reference of all that
/// was found by looking through the file. The last complete definition of an object wins. Nothing when no
/// page can be found, unless a password may hide them.
///
/// A locked file stays locked with the same password, and its object streams can be listed only with one of
/// `passwords` (bytes as for qpdf; the empty one opens many). When none fits, the result still has the
/// encryption, so that opening it fails for want of the password: ask, and salvage the same bytes again with
/// the answer.
///
/// Takes time in proportion to the size, and memory of about twice the size plus 256 MB at most.
std::optional<QByteArray> salvaged(const QByteArray& bytes,
                                   const std::vector<std::string>& passwords = {std::string()});

} // namespace folvane::pdf
