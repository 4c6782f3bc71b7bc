#pragma once

#include <QtGlobal>

#include <Object.h>

#include <set>

namespace folvane::pdf {

class DrawingBudget;

/// Measures how large what one page is drawn from becomes when it is unpacked, and ends the drawing beyond all measure:
/// a file of some kilobytes can hold content of gigabytes.
class ContentGauge {
public:
    static constexpr qint64 most = 256 << 20; ///< bytes

    explicit ContentGauge(DrawingBudget& budget) : m_budget(budget) {}

    /// The contents of a page, measured while they are read.
    Object measured(Object contents, XRef* objects);
    /// The content stream of a form or a pattern, unpacked once for this if it is not small anyway.
    void measure(Object& stream);

    // For its streams.
    bool add(qint64 bytes);

private:
    Object measuredStream(Object content);

    DrawingBudget& m_budget;
    qint64 m_inAll = 0;
    std::set<qint64> m_known; ///< where in the file a stream starts that has been measured
};

} // namespace folvane::pdf
