#pragma once

#include "pdf/salvage/salvageSyntax.h"

#include <map>

namespace folvane::pdf::salvage {

struct FoundObject {
    Reference id;
    qsizetype position = 0; // where its header begins in the file; that of the object stream that holds it
    QByteArrayView value;   // of a stream: its dictionary
    bool isStream = false;
    int container = 0; // number of the object stream that holds it, 0 for none
    int index = 0;     // its place in there
};

/// By number: what a file refers to is the last complete definition.
using FoundObjects = std::map<int, FoundObject>;

struct Scan {
    FoundObjects objects;
    std::vector<QByteArrayView>
        trailers; // dictionaries, those of cross-reference streams too, even cut off ones
};

/// Looks through a whole file for "N G obj". Numbers above 8388607 are passed over. The data of streams is
/// skipped, so that a file within the file stays hidden: by /Length where "endstream" follows, else up to
/// whatever ends it.
Scan scan(QByteArrayView file);

/// The value of /Type, empty when there is none.
QByteArrayView typeOf(const FoundObject& object);

} // namespace folvane::pdf::salvage
