#pragma once

#include "pdf/structure/qpdfInclude.h"

namespace folvane::pdf {

/// Undoes LZW (ISO 32000-2, 7.4.4). Throws std::runtime_error where a code has no meaning.
class LzwDecoder : public Pipeline {
public:
    /// `isEarly`: codes grow longer one entry before they have to, as is usual.
    LzwDecoder(Pipeline* next, bool isEarly);

    void write(const unsigned char* data, size_t length) override;
    void finish() override;

private:
    struct Entry {
        unsigned before = 0; ///< the entry that this one continues
        unsigned length = 0;
        unsigned char first = 0;
        unsigned char last = 0;
    };

    void take(unsigned code);
    void add(unsigned before, unsigned char last);
    void emit(unsigned code);
    void clear();

    std::vector<Entry> m_entries;
    std::vector<unsigned char> m_text;
    unsigned m_early;
    unsigned m_codeBits = 9;
    unsigned m_pending = 0;
    unsigned m_pendingBits = 0;
    unsigned m_last;
    bool m_isAtEnd = false;
};

} // namespace folvane::pdf
