#pragma once

#include <QByteArray>
#include <QHashFunctions>

#include <list>
#include <memory>
#include <mutex>
#include <unordered_map>

namespace folvane {

/// Who gives way in a cache that has no room for another value.
enum class WhenFull {
    OldestLeaves, ///< what was not asked for longest
    /// The new value. For what is asked for in rounds, always in the same order: there each value would leave just
    /// before it is asked for again.
    NewestLeaves,
};

/// Values by key, up to an amount of memory. For any number of threads.
template <typename Value> class BoundedCache {
public:
    /// `limit`: of what insert() is told, together.
    explicit BoundedCache(size_t limit, WhenFull whenFull = WhenFull::OldestLeaves)
        : m_limit(limit), m_whenFull(whenFull)
    {
    }

    /// Null when it is not there.
    std::shared_ptr<const Value> find(const QByteArray& key)
    {
        const std::lock_guard lock(m_mutex);
        const auto found = m_byKey.find(key);
        if (found == m_byKey.end())
            return nullptr;
        m_entries.splice(m_entries.begin(), m_entries, found->second);
        return found->second->value;
    }

    /// What is larger than the limit alone is not kept.
    void insert(const QByteArray& key, std::shared_ptr<const Value> value, size_t bytes)
    {
        const std::lock_guard lock(m_mutex);
        if (bytes > m_limit)
            return;
        if (const auto found = m_byKey.find(key); found != m_byKey.end())
            remove(found->second);
        if (m_whenFull == WhenFull::NewestLeaves && bytes > m_limit - m_bytes)
            return;
        m_bytes += bytes;
        m_entries.push_front({key, std::move(value), bytes});
        m_byKey.emplace(key, m_entries.begin());
        while (m_bytes > m_limit)
            remove(std::prev(m_entries.end()));
    }

    void clear()
    {
        const std::lock_guard lock(m_mutex);
        m_byKey.clear();
        m_entries.clear();
        m_bytes = 0;
    }

    size_t bytes() const
    {
        const std::lock_guard lock(m_mutex);
        return m_bytes;
    }

private:
    struct Entry {
        QByteArray key;
        std::shared_ptr<const Value> value;
        size_t bytes;
    };
    struct KeyHash {
        size_t operator()(const QByteArray& key) const { return qHash(key); }
    };
    using Entries = std::list<Entry>;

    void remove(typename Entries::iterator entry)
    {
        m_bytes -= entry->bytes;
        m_byKey.erase(entry->key);
        m_entries.erase(entry);
    }

    const size_t m_limit;
    const WhenFull m_whenFull;
    mutable std::mutex m_mutex;
    Entries m_entries; // the one asked for last stands first
    std::unordered_map<QByteArray, typename Entries::iterator, KeyHash> m_byKey;
    size_t m_bytes = 0;
};

} // namespace folvane
