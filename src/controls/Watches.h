#pragma once

#include <QProperty>

#include <utility>
#include <vector>

namespace folvane {

/// What a view keeps of the fields it shows: each listed action runs when its field changes, until this dies.
class Watches {
public:
    /// Runs `refresh` now and whenever one of the fields changes.
    template <typename Refresh, typename... Fields>
    void keep(Refresh refresh, Fields&... fields)
    {
        (m_notifiers.push_back(fields.addNotifier(refresh)), ...);
        refresh();
    }

    void clear() { m_notifiers.clear(); }

private:
    std::vector<QPropertyNotifier> m_notifiers;
};

} // namespace folvane
