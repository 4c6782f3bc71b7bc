#pragma once

#include "pdf/copying/SourcePart.h"

namespace folvane::pdf {

/// Output intents of all parts, each kind and condition once.
void copyOutputIntents(QPDF& target, std::list<SourcePart>& parts);

/// What belongs to a document as a whole and so travels only when one source is copied whole: the structure tree, its
/// language, attachments, and how it wants to be shown.
void copyWholeDocument(QPDF& target, SourcePart& part);

/// Title, author, subject and keywords.
void copyDescription(QPDF& target, SourcePart& part);

} // namespace folvane::pdf
