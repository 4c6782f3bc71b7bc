#pragma once

#include "pdf/salvage/salvageScan.h"

#include <QByteArray>

#include <deque>
#include <string>

namespace folvane::pdf::salvage {

struct Contents {
    std::vector<FoundObject> objects; // their values point into `decoded`
    std::deque<QByteArray> decoded;
    bool isLocked = false; // no password opened the file
};

/// What stands in object streams. `file` is one that qpdf can open, with one of the passwords. Of a stream
/// that is cut off or damaged, the objects before the damage. At most 64 MB of one and 256 MB of
/// all together are unpacked.
Contents contentsOf(const std::vector<FoundObject>& objectStreams, const QByteArray& file,
                    const std::vector<std::string>& passwords);

} // namespace folvane::pdf::salvage
