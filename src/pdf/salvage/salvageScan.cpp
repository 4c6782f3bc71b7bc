#include "pdf/salvage/salvageScan.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>

#include <string.h>

namespace folvane::pdf::salvage {

namespace {

constexpr qint64 highestGeneration = 65535;
constexpr size_t mostMarks = 10'000'000; // a file of more is hostile
constexpr int longestGap = 32;           // white space between number, generation and "obj"
constexpr qsizetype longestLook = 256;   // for a word that must follow

qsizetype indexOf(QByteArrayView text, std::string_view word, qsizetype from)
{
    if (from >= text.size())
        return text.size();
    const void* hit = memmem(text.data() + from, size_t(text.size() - from), word.data(), word.size());
    return hit ? static_cast<const char*>(hit) - text.data() : text.size();
}

/// Where something begins that stands between objects.
struct Mark {
    qsizetype begin = 0;
    qsizetype end = 0; // behind "obj" or "trailer"
    Reference id;      // number 0: a trailer
};

/// Reads backwards.
class HeaderReader {
public:
    HeaderReader(QByteArrayView text, qsizetype end) : m_text(text), m_at(end) {}

    bool skipGap()
    {
        const qsizetype from = m_at;
        while (m_at > 0 && from - m_at < longestGap && isSpace(m_text[m_at - 1]))
            --m_at;
        return m_at < from;
    }

    std::optional<int> number(qint64 highest)
    {
        qint64 number = 0;
        qint64 unit = 1;
        const qsizetype from = m_at;
        for (; m_at > 0 && m_text[m_at - 1] >= '0' && m_text[m_at - 1] <= '9'; --m_at, unit *= 10) {
            number += (m_text[m_at - 1] - '0') * unit;
            if (unit > 1'000'000'000'000)
                return {};
        }
        return m_at < from && number <= highest ? std::optional(int(number)) : std::nullopt;
    }

    qsizetype position() const { return m_at; }

private:
    QByteArrayView m_text;
    qsizetype m_at;
};

std::optional<Mark> headerEndingAt(QByteArrayView file, qsizetype word)
{
    const qsizetype end = word + 3;
    if (end < file.size() && !isSpace(file[end]) && !isDelimiter(file[end]))
        return {};
    HeaderReader reader(file, word);
    if (!reader.skipGap())
        return {};
    const auto generation = reader.number(highestGeneration);
    if (!generation || !reader.skipGap())
        return {};
    const auto number = reader.number(highestObjectNumber);
    if (!number || *number == 0)
        return {};
    return Mark{reader.position(), end, {*number, *generation}};
}

std::vector<Mark> marksIn(QByteArrayView file)
{
    std::vector<Mark> marks;
    for (qsizetype at = indexOf(file, "obj", 0); at < file.size(); at = indexOf(file, "obj", at + 3)) {
        if (marks.size() >= mostMarks)
            break;
        if (const auto mark = headerEndingAt(file, at))
            marks.push_back(*mark);
    }
    for (qsizetype at = indexOf(file, "trailer", 0); at < file.size();
         at = indexOf(file, "trailer", at + 7)) {
        if (marks.size() >= mostMarks)
            break;
        marks.push_back({at, at + 7, {}});
    }
    std::sort(marks.begin(), marks.end(), [](const Mark& a, const Mark& b) { return a.begin < b.begin; });
    return marks;
}

/// The next place of a word, for questions that only go forwards: the file is searched once.
class NextPlace {
public:
    NextPlace(QByteArrayView file, std::string_view word) : m_file(file), m_word(word) {}

    qsizetype from(qsizetype at)
    {
        if (m_found < at)
            m_found = indexOf(m_file, m_word, at);
        return m_found;
    }

private:
    QByteArrayView m_file;
    std::string_view m_word;
    qsizetype m_found = -1;
};

class Scanner {
public:
    explicit Scanner(QByteArrayView file) : m_file(file), m_marks(marksIn(file))
    {
        for (const Mark& mark : m_marks)
            m_lastOfNumber[mark.id.number] = mark.end;
    }

    Scan run()
    {
        // What is read in vain is read again from the next mark on; a file made of nothing else is given up.
        const qsizetype patience = 8 * m_file.size() + 1'000'000;
        for (m_mark = 0; m_mark < m_marks.size() && m_wasted < patience; ++m_mark) {
            if (m_marks[m_mark].begin >= m_at)
                take(m_marks[m_mark]);
        }
        return std::move(m_scan);
    }

private:
    void take(const Mark& mark)
    {
        const ReadValue read = readValue(m_file, mark.end);
        if (read.value.isEmpty()) {
            m_wasted += read.reached - mark.end;
            if (mark.id.number == 0) // what comes before the damage is still worth having
                m_scan.trailers.push_back(m_file.sliced(mark.end, read.reached - mark.end));
            return;
        }
        m_at = read.reached;
        if (mark.id.number == 0)
            m_scan.trailers.push_back(read.value);
        else
            takeObject(mark, read.value);
    }

    void takeObject(const Mark& mark, QByteArrayView value)
    {
        FoundObject object{mark.id, mark.begin, value};
        if (value.startsWith("<<") && startsStream()) {
            object.isStream = true;
            m_at = endOfStream(Dictionary(value).value("/Length"), dataBegin());
        }
        if (object.isStream && typeOf(object) == "/XRef")
            m_scan.trailers.push_back(value);
        else
            m_scan.objects.insert_or_assign(mark.id.number, object);
    }

    /// A piece of the file that ends soon, so that no look ahead can go through all of it again and again.
    QByteArrayView piece(qsizetype from) const
    {
        return m_file.first(std::min(m_file.size(), from + longestLook));
    }

    bool startsStream() const { return Tokens(piece(m_at), m_at).next().text == "stream"; }

    qsizetype dataBegin() const
    {
        Tokens tokens(piece(m_at), m_at);
        tokens.next();
        qsizetype at = tokens.position();
        if (at < m_file.size() && m_file[at] == '\r')
            ++at;
        if (at < m_file.size() && m_file[at] == '\n')
            ++at;
        return at;
    }

    qsizetype endOfStream(QByteArrayView statedLength, qsizetype begin)
    {
        const auto length = resolvedLength(statedLength);
        if (length && *length >= 0 && *length <= m_file.size() - begin) {
            const qsizetype end = begin + qsizetype(*length);
            Tokens tokens(piece(end), end);
            if (tokens.next().text == "endstream")
                return tokens.position();
        }
        return std::min({m_endstream.from(begin), m_endobj.from(begin), nextMark(begin)});
    }

    std::optional<qint64> resolvedLength(QByteArrayView stated) const
    {
        const auto reference = asReference(stated);
        if (!reference)
            return asInteger(stated);
        const auto header = m_lastOfNumber.find(reference->number);
        if (header == m_lastOfNumber.end())
            return {};
        return asInteger(Tokens(piece(header->second), header->second).next().text);
    }

    qsizetype nextMark(qsizetype from) const
    {
        const auto next = std::find_if(m_marks.begin() + ptrdiff_t(m_mark) + 1, m_marks.end(),
                                       [&](const Mark& mark) { return mark.begin >= from; });
        return next == m_marks.end() ? m_file.size() : next->begin;
    }

    QByteArrayView m_file;
    std::vector<Mark> m_marks;
    size_t m_mark = 0;
    std::unordered_map<int, qsizetype> m_lastOfNumber; // behind the "obj"
    NextPlace m_endstream{m_file, "endstream"};
    NextPlace m_endobj{m_file, "endobj"};
    qsizetype m_at = 0;
    qsizetype m_wasted = 0;
    Scan m_scan;
};

} // namespace

Scan scan(QByteArrayView file)
{
    return Scanner(file).run();
}

QByteArrayView typeOf(const FoundObject& object)
{
    return Dictionary(object.value).value("/Type");
}

} // namespace folvane::pdf::salvage
