#include "pdf/salvage/salvageContents.h"

#include "pdf/structure/boundedDecoding.h"
#include "pdf/structure/qpdfInclude.h"

#include <algorithm>

namespace folvane::pdf::salvage {

namespace {

constexpr qsizetype unpackedLimit = 256 * 1024 * 1024;
constexpr qsizetype limitOfOne = 64 * 1024 * 1024;
constexpr size_t mostObjects = 2'000'000;

struct LimitReached {}; // no std::exception: qpdf would swallow that and go on unpacking

class Collector : public Pipeline {
public:
    explicit Collector(qsizetype room) : Pipeline("salvage", nullptr), m_room(room) {}

    void write(const unsigned char* data, size_t size) override
    {
        if (size > size_t(m_room - m_bytes.size()))
            throw LimitReached();
        m_bytes.append(reinterpret_cast<const char*>(data), qsizetype(size));
    }
    void finish() override {}

    const QByteArray& bytes() const { return m_bytes; }

private:
    qsizetype m_room;
    QByteArray m_bytes;
};

std::shared_ptr<QPDF> opened(const QByteArray& file, const std::string& password)
{
    try {
        auto qpdf = QPDF::create();
        qpdf->setSuppressWarnings(true);
        qpdf->processMemoryFile("salvage", file.constData(), size_t(file.size()), password.c_str());
        return qpdf;
    } catch (const std::exception&) {
        return nullptr; // the password, or damage that cannot be mended: the caller asks no further
    }
}

std::shared_ptr<QPDF> openedWithAny(const QByteArray& file, const std::vector<std::string>& passwords)
{
    for (const std::string& password : passwords) {
        if (auto qpdf = opened(file, password))
            return qpdf;
    }
    return nullptr;
}

/// As far as it can be decoded.
QByteArray decoded(QPDFObjectHandle& stream, qsizetype room)
{
    Collector collector(room);
    try {
        stream.pipeStreamData(&collector, 0, qpdf_dl_generalized, true);
    } catch (const std::exception&) {
        // What came out before the damage is in the collector.
    } catch (const LimitReached&) {
    }
    return collector.bytes();
}

struct Place {
    int number = 0;
    int index = 0;
    qsizetype begin = 0;
};

/// The pairs of number and offset at the start of an object stream.
std::vector<Place> placesIn(QByteArrayView stream, qsizetype first)
{
    std::vector<Place> places;
    Tokens tokens(stream.first(first));
    for (int index = 0;; ++index) {
        const auto number = asInteger(tokens.next().text);
        const auto offset = asInteger(tokens.next().text);
        if (!number || !offset || places.size() > mostObjects)
            return places;
        if (*number > 0 && *number <= highestObjectNumber && *offset >= 0 && *offset < stream.size() - first)
            places.push_back({int(*number), index, first + qsizetype(*offset)});
    }
}

/// The offset at which the next object begins ends each one, so that no text is read twice.
std::vector<FoundObject> objectsIn(QByteArrayView stream, qsizetype first, const FoundObject& container)
{
    std::vector<FoundObject> objects;
    std::vector<Place> places = placesIn(stream, first);
    std::sort(places.begin(), places.end(), [](const Place& a, const Place& b) { return a.begin < b.begin; });
    for (size_t i = 0; i < places.size(); ++i) {
        const Place& place = places[i];
        const qsizetype end = i + 1 < places.size() ? places[i + 1].begin : stream.size();
        const QByteArrayView value = readValue(stream.first(end), place.begin).value;
        if (!value.isEmpty())
            objects.push_back(
                {{place.number, 0}, container.position, value, false, container.id.number, place.index});
    }
    return objects;
}

std::optional<qsizetype> beginOfObjects(QPDFObjectHandle& stream, QByteArrayView content)
{
    QPDFObjectHandle first = stream.getDict().getKey("/First");
    if (!first.isInteger() || first.getIntValue() < 0 || first.getIntValue() > content.size())
        return {};
    return qsizetype(first.getIntValue());
}

/// Gives back how many bytes were unpacked.
qsizetype add(Contents& contents, const FoundObject& container, QPDF& qpdf, qsizetype room)
{
    QPDFObjectHandle stream = qpdf.getObjectByID(container.id.number, container.id.generation);
    if (!stream.isStream())
        return 0;
    const QByteArray& content = contents.decoded.emplace_back(decoded(stream, std::min(room, limitOfOne)));
    if (const auto first = beginOfObjects(stream, content)) {
        const auto objects = objectsIn(content, *first, container);
        contents.objects.insert(contents.objects.end(), objects.begin(), objects.end());
    }
    return content.size();
}

} // namespace

Contents contentsOf(const std::vector<FoundObject>& objectStreams, const QByteArray& file,
                    const std::vector<std::string>& passwords)
{
    boundDecoding();
    Contents contents;
    const auto qpdf = openedWithAny(file, passwords);
    contents.isLocked = !qpdf;
    if (!qpdf)
        return contents;
    qsizetype room = unpackedLimit;
    for (const FoundObject& container : objectStreams) {
        if (contents.objects.size() > mostObjects)
            break;
        try {
            room -= add(contents, container, *qpdf, room);
        } catch (const std::exception&) {
            continue; // this one is lost
        }
    }
    return contents;
}

} // namespace folvane::pdf::salvage
