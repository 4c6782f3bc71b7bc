#pragma once

#include <QUuid>

#include <variant>

namespace folvane {

/// What the main area shows: a document, or one of the fixed places.
class Destination {
public:
    enum class Place { Home, Merge, Stamps, Codes, About };

    Destination(Place place = Place::Home) : m_value(place) {}
    static Destination file(const QUuid& id) { return Destination(id); }

    bool isFile() const { return std::holds_alternative<QUuid>(m_value); }
    bool is(Place place) const { return m_value == std::variant<Place, QUuid>(place); }
    /// The document shown; null when a fixed place is.
    QUuid fileID() const { return isFile() ? std::get<QUuid>(m_value) : QUuid(); }
    bool operator==(const Destination&) const = default;

private:
    explicit Destination(const QUuid& id) : m_value(id) {}

    std::variant<Place, QUuid> m_value;
};

/// A tool to go to right after opening.
enum class Tool { Sign, Split, Compress };

} // namespace folvane
