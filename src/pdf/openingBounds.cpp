#include "pdf/openingBounds.h"

#include "pdf/salvage/salvageScan.h"
#include "platform/files/SourceFile.h"

#include <algorithm>
#include <unordered_set>

namespace folvane::pdf {

namespace {

using namespace salvage;

constexpr qint64 endSize = 1 << 20;
constexpr qint64 searchedWhole = 256LL << 20;
constexpr qint64 headerSearch = 1024; // as far as the library looks for the header from the front,
constexpr qint64 startSearch = 1054;  // and for the start of the cross-reference from the end
constexpr qint64 longestDictionary = 16 << 20;
constexpr qint64 alwaysGranted = 1 << 18; // objects
constexpr qint64 neverGranted = 8'388'608;
constexpr qint64 tooMany = neverGranted + 1;
constexpr qint64 bytesOfAnObject = 4; // packed well, with its cross-reference
constexpr QByteArrayView start("startxref");
constexpr int widest = 8; // bytes of a column

QByteArray pieceOf(const SourceFile& file, qint64 from, qint64 size)
{
    QByteArray piece(std::clamp(file.size() - from, 0LL, size), Qt::Uninitialized);
    piece.truncate(std::max(file.read(from, piece.data(), piece.size()), 0LL));
    return piece;
}

QByteArray endOf(const SourceFile& file, qint64 size)
{
    return pieceOf(file, std::max(file.size() - size, 0LL), size);
}

bool isEmpty(const QByteArray& piece)
{
    return std::all_of(piece.begin(), piece.end(), [](char c) { return c == '\0'; });
}

/// Where the header begins that the library takes for one; offsets count from there.
qsizetype headerOf(const QByteArray& front)
{
    const auto isDigit = [&](qsizetype at) {
        return at < front.size() && front[at] >= '0' && front[at] <= '9';
    };
    for (qsizetype at = front.indexOf("%PDF-"); at >= 0; at = front.indexOf("%PDF-", at + 1)) {
        qsizetype dot = at + 5;
        while (isDigit(dot))
            ++dot;
        if (dot > at + 5 && dot < front.size() && front[dot] == '.' && isDigit(dot + 1))
            return at;
    }
    return 0;
}

bool namesPdf(const QByteArray& piece)
{
    return piece.contains(start) || piece.contains("%PDF-");
}

bool holdsObjects(const QByteArray& piece)
{
    const Scan found = scan(piece);
    return !found.objects.empty() || !found.trailers.empty();
}

/// Follows the sections like the library does, but keeps nothing.
class ReferenceWalk {
public:
    explicit ReferenceWalk(const SourceFile& file)
        : m_file(file),
          m_shift(headerOf(pieceOf(file, 0, headerSearch + 8))),
          m_granted(std::min(alwaysGranted + file.size() / bytesOfAnObject, neverGranted)),
          m_room(8 * std::min(file.size(), searchedWhole) + searchedWhole)
    {
    }

    bool isPlausible()
    {
        const QByteArray end = endOf(m_file, startSearch);
        for (qsizetype at = end.indexOf(start); at >= 0; at = end.indexOf(start, at + 1))
            follow(Tokens(end, at + start.size()).next().text);
        while (!m_waiting.empty() && isWithinBounds()) {
            const qint64 at = m_waiting.back();
            m_waiting.pop_back();
            visit(at);
        }
        return isWithinBounds();
    }

private:
    bool isWithinBounds() const { return m_granted >= 0 && m_room >= 0; }

    void follow(QByteArrayView offset)
    {
        const auto at = asInteger(offset);
        if (at && *at > 0 && *at < m_file.size() - m_shift && m_visited.insert(*at).second)
            m_waiting.push_back(*at);
    }

    void visit(qint64 at)
    {
        const qint64 position = at + m_shift;
        const QByteArray text = read(position, 64);
        Tokens tokens(text);
        const Token first = tokens.next();
        tokens.next();
        if (first.text == "xref")
            visitTable(position);
        else if (first.kind == Token::Kind::Integer && tokens.next().text == "obj")
            visitStream(position + tokens.position());
    }

    QByteArray read(qint64 position, qint64 size)
    {
        m_room -= size;
        return pieceOf(m_file, position, size);
    }

    void visitTable(qint64 position)
    {
        constexpr QByteArrayView word("trailer");
        for (qint64 step = 1 << 11; position < m_file.size() && isWithinBounds();
             step = std::min(2 * step, endSize)) {
            const qsizetype found = read(position, step + word.size()).indexOf(word);
            if (found < 0) {
                position += step;
                continue;
            }
            const QByteArray text = dictionaryAt(position + found + word.size());
            const Dictionary trailer(text);
            follow(trailer.value("/XRefStm"));
            follow(trailer.value("/Prev"));
            return;
        }
    }

    /// An object that is no cross-reference is none for the library, either.
    void visitStream(qint64 position)
    {
        const QByteArray text = dictionaryAt(position);
        const Dictionary dictionary(text);
        const QByteArrayView type = dictionary.value("/Type");
        const bool isOther = type.startsWith('/') && type != "/XRef";
        if (!text.isEmpty() && !isDisguised(dictionary) && (isOther || type.isEmpty()))
            return;
        m_granted -= isDisguised(dictionary) ? tooMany : announcedBy(dictionary);
        follow(dictionary.value("/Prev"));
    }

    /// Escapes in these names have no use but to hide them.
    static bool isDisguised(const Dictionary& dictionary)
    {
        const auto& entries = dictionary.entries();
        return dictionary.value("/Type").contains('#')
               || std::any_of(entries.begin(), entries.end(),
                              [](const Entry& entry) { return entry.key.contains('#'); });
    }

    /// Empty when there is none that a sound file could have.
    QByteArray dictionaryAt(qint64 position)
    {
        for (qint64 size = 1 << 12; size <= longestDictionary && isWithinBounds(); size *= 16) {
            const QByteArray text = read(position, size);
            const ReadValue found = readValue(text, 0);
            if (!found.value.isEmpty())
                return found.value.toByteArray();
            if (text.size() < size)
                break;
        }
        return {};
    }

    /// More than is ever granted for what makes no sense.
    qint64 announcedBy(const Dictionary& dictionary) const
    {
        qint64 rowBytes = 0;
        for (const QByteArrayView column : asArray(dictionary.value("/W"))) {
            const qint64 width = asInteger(column).value_or(-1);
            if (width < 0 || width > widest)
                return tooMany;
            rowBytes += width;
        }
        qint64 announced = 0;
        const QByteArrayView index = dictionary.value("/Index");
        const std::vector<QByteArrayView> runs = asArray(index);
        for (size_t i = 1; i < runs.size(); i += 2)
            announced = added(announced, runs[i]);
        if (index.isEmpty())
            announced = added(0, dictionary.value("/Size"));
        const bool isReadable = rowBytes > 0 && (index.isEmpty() || !runs.empty());
        return isReadable ? announced : tooMany;
    }

    static qint64 added(qint64 announced, QByteArrayView more)
    {
        const qint64 count = asInteger(more).value_or(-1);
        return count < 0 || count > neverGranted ? tooMany : std::min(announced + count, tooMany);
    }

    const SourceFile& m_file;
    qint64 m_shift;
    qint64 m_granted; ///< objects that may still be announced
    qint64 m_room;    ///< bytes that may still be read: sections may name the same place again and again
    std::vector<qint64> m_waiting;
    std::unordered_set<qint64> m_visited;
};

} // namespace

bool canHoldPdf(const SourceFile& file)
{
    if (endOf(file, startSearch).contains(start)) // as nearly all do
        return true;
    const QByteArray end = endOf(file, endSize);
    if (file.size() > searchedWhole && isEmpty(end))
        return false;
    const QByteArray front = pieceOf(file, 0, std::min(endSize, file.size() - end.size()));
    return namesPdf(front) || namesPdf(end) || holdsObjects(front) || holdsObjects(end);
}

bool hasPlausibleReferences(const SourceFile& file)
{
    return ReferenceWalk(file).isPlausible();
}

} // namespace folvane::pdf
