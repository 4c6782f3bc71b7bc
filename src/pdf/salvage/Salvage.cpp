#include "pdf/salvage/Salvage.h"

#include "pdf/salvage/salvageContents.h"
#include "pdf/salvage/salvagePages.h"
#include "pdf/salvage/salvageScan.h"

#include <algorithm>

namespace folvane::pdf {

namespace {

using namespace salvage;

/// What goes on into the new trailer, as it is written in the old ones.
struct TrailerValues {
    std::optional<Reference> root;
    QByteArrayView encryption;
    QByteArrayView id;
    QByteArrayView info;
};

bool isEncryption(const FoundObject& object)
{
    const Dictionary dictionary(object.value);
    return dictionary.value("/Filter") == "/Standard" && !dictionary.value("/O").isEmpty()
           && !dictionary.value("/U").isEmpty();
}

/// The encryption is found by its looks when every trailer is lost.
QByteArray encryptionReference(const FoundObjects& objects, QByteArrayView stated)
{
    const auto reference = asReference(stated);
    if (!stated.isEmpty() && (!reference || objects.contains(reference->number)))
        return stated.toByteArray();
    const auto found = std::find_if(objects.begin(), objects.end(), [](const auto& entry) {
        return !entry.second.isStream && isEncryption(entry.second);
    });
    return found == objects.end() ? QByteArray() : asText(found->second.id);
}

TrailerValues lastValues(const std::vector<QByteArrayView>& trailers)
{
    TrailerValues values;
    const auto keep = [](QByteArrayView& kept, QByteArrayView value) {
        kept = value.isEmpty() ? kept : value;
    };
    for (const QByteArrayView trailer : trailers) {
        const Dictionary dictionary(trailer);
        if (const auto root = asReference(dictionary.value("/Root")))
            values.root = root;
        keep(values.encryption, dictionary.value("/Encrypt"));
        keep(values.id, dictionary.value("/ID"));
        keep(values.info, dictionary.value("/Info"));
    }
    return values;
}

void appendNumber(QByteArray& to, qint64 number, int bytes)
{
    for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8)
        to.append(char(number >> shift));
}

/// Grows the new file: the damaged one as it is, objects behind it, and at last a cross-reference stream.
class Rebuilt {
public:
    explicit Rebuilt(QByteArrayView damaged)
    {
        const QByteArrayView header("%PDF-1.7\n");
        m_file.reserve(damaged.size() + damaged.size() / 16 + 4096);
        m_file.append(header).append(damaged);
        m_file.append("\nendstream\nendobj\n"); // for a stream that the file's end cuts off
        m_shift = header.size();
    }

    void locate(const FoundObject& object)
    {
        m_places[object.id.number] = {1, m_shift + object.position, object.id.generation};
    }

    void locateInStream(const FoundObject& object)
    {
        m_places[object.id.number] = {2, object.container, object.index};
    }

    void add(Reference id, QByteArrayView value)
    {
        m_places[id.number] = {1, m_file.size(), id.generation};
        m_file.append(header(id)).append(value).append("\nendobj\n");
    }

    int unusedNumber() const { return m_places.rbegin()->first + 1; }

    QByteArray finished(Reference root, const TrailerValues& values, const QByteArray& encryption);

private:
    struct Place {
        int kind =
            0; // as in the first column of a cross-reference stream: 0 free, 1 in the file, 2 in a stream
        qint64 where = 0;
        int which = 0;
    };

    static QByteArray header(Reference id)
    {
        return QByteArray::number(id.number) + ' ' + QByteArray::number(id.generation) + " obj\n";
    }
    QByteArray index() const;
    QByteArray table() const;

    QByteArray m_file;
    qsizetype m_shift = 0;
    std::map<int, Place> m_places{{0, Place{0, 0, 65535}}};
};

/// First number and length of each run of numbers.
QByteArray Rebuilt::index() const
{
    QByteArray text;
    for (auto place = m_places.begin(); place != m_places.end();) {
        const int first = place->first;
        int next = first;
        for (; place != m_places.end() && place->first == next; ++place)
            ++next;
        text += QByteArray::number(first) + ' ' + QByteArray::number(next - first) + ' ';
    }
    return text;
}

QByteArray Rebuilt::table() const
{
    QByteArray table;
    for (const auto& [number, place] : m_places) {
        appendNumber(table, place.kind, 1);
        appendNumber(table, place.where, 6);
        appendNumber(table, place.which, 4);
    }
    return table;
}

QByteArray Rebuilt::finished(Reference root, const TrailerValues& values, const QByteArray& encryption)
{
    const Reference self{unusedNumber(), 0};
    const QByteArray start = QByteArray::number(m_file.size());
    m_places[self.number] = {1, m_file.size(), 0};
    const QByteArray rows = table();
    m_file += header(self) + "<< /Type /XRef /W [1 6 4] /Size " + QByteArray::number(self.number + 1)
              + " /Index [" + index() + "] /Root " + asText(root) + " /Length "
              + QByteArray::number(rows.size());
    const auto keep = [&](const char* key, QByteArrayView value) {
        if (!value.isEmpty())
            m_file.append(key).append(value);
    };
    keep(" /Encrypt ", encryption);
    keep(" /ID ", isSound(values.id) ? values.id : QByteArrayView());
    keep(" /Info ", asReference(values.info) ? values.info : QByteArrayView());
    m_file += " >>\nstream\n";
    m_file += rows;
    m_file += "\nendstream\nendobj\nstartxref\n" + start + "\n%%EOF\n";
    return std::move(m_file);
}

class Salvager {
public:
    explicit Salvager(const QByteArray& bytes)
        : m_bytes(bytes),
          m_scan(scan(bytes)),
          m_values(lastValues(m_scan.trailers)),
          m_encryption(encryptionReference(m_scan.objects, m_values.encryption))
    {
    }

    std::optional<QByteArray> run(const std::vector<std::string>& passwords)
    {
        unpackObjectStreams(passwords);
        if (m_contents.isLocked)
            return withoutPages();
        const auto tree = pageTree(m_scan.objects, m_values.root);
        return tree ? std::optional(complete(*tree)) : std::nullopt;
    }

private:
    std::vector<FoundObject> objectStreams() const
    {
        std::vector<FoundObject> streams;
        for (const auto& [number, object] : m_scan.objects) {
            if (object.isStream && typeOf(object) == "/ObjStm")
                streams.push_back(object);
        }
        std::sort(streams.begin(), streams.end(),
                  [](const FoundObject& a, const FoundObject& b) { return a.position < b.position; });
        return streams;
    }

    void unpackObjectStreams(const std::vector<std::string>& passwords)
    {
        const std::vector<FoundObject> streams = objectStreams();
        if (streams.empty())
            return;
        m_contents = contentsOf(streams, withoutPages(), passwords);
        for (const FoundObject& object : m_contents.objects) {
            FoundObject& known = m_scan.objects[object.id.number];
            if (known.value.isEmpty() || known.position < object.position)
                known = object;
        }
    }

    Rebuilt withPlainObjects() const
    {
        Rebuilt file(m_bytes);
        for (const auto& [number, object] : m_scan.objects) {
            if (object.container == 0)
                file.locate(object);
        }
        return file;
    }

    /// Opens, so that streams can be read from it, or tells that a password is needed.
    QByteArray withoutPages() const
    {
        Rebuilt file = withPlainObjects();
        const Reference catalogue{file.unusedNumber(), 0};
        file.add(catalogue, "<< /Type /Catalog /Pages << /Type /Pages /Kids [] /Count 0 >> >>");
        return file.finished(catalogue, m_values, m_encryption);
    }

    /// In an encrypted file a plain object's strings are encrypted, those of an object stream are not: such
    /// an object has to stay where it is.
    QByteArray complete(const PageTree& tree) const
    {
        Rebuilt file = withPlainObjects();
        for (const auto& [number, object] : m_scan.objects) {
            if (object.container != 0 && m_encryption.isEmpty())
                file.add(object.id, object.value);
            else if (object.container != 0)
                file.locateInStream(object);
        }
        for (const MadeObject& made : tree.made)
            file.add(made.id, made.value);
        return file.finished(tree.catalogue, m_values, m_encryption);
    }

    const QByteArray& m_bytes;
    Scan m_scan;
    TrailerValues m_values;
    QByteArray m_encryption;
    Contents m_contents;
};

} // namespace

std::optional<QByteArray> salvaged(const QByteArray& bytes, const std::vector<std::string>& passwords)
{
    return Salvager(bytes).run(passwords);
}

} // namespace folvane::pdf
