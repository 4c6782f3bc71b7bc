"""Compares a saved file with its source: what the copy must still have, and what it must have no more."""

from collections import Counter
from dataclasses import dataclass, replace
from functools import cached_property
from pathlib import Path

from corpusTools import outsideTools as tools
from corpusTools.passwords import ONLY_ATTACHMENTS_LOCKED
from corpusTools.pdfReader import PdfReader, Unreadable

AWAY_FROM_PAGE = ("/Parent", "/P", "/Dest", "/A", "/B", "/StructParents", "/Popup", "/IRT")
AWAY_FROM_CATALOGUE = ("/Pages", "/Outlines", "/Names", "/Dests", "/Fields", "/StructTreeRoot")
SHOWN = 3  # differing entries that a report quotes


@dataclass(frozen=True)
class Difference:
    check: str
    words: str


class Source:
    """A document as it came, and what the tools see in it. Each is looked up once."""

    def __init__(self, path, password, folder):
        self.path = Path(path)
        self.password = password
        self.plain = tools.decrypted(path, password, folder) if password else self.path
        self._folder = folder

    @cached_property
    def faults(self):
        return tools.faults(self.path, self.password)

    @cached_property
    def reader(self):
        return _reader(self.plain)

    @cached_property
    def streams(self):
        return _reader(self.plain, streams=True)

    @cached_property
    def texts(self):
        return tools.texts(self.plain)

    @cached_property
    def pixels(self):
        """A renderer and its digests of the pages, by the first that sees any."""
        return _drawn(self.plain)

    @cached_property
    def turned(self):
        copy = tools.turned(self.plain, self._folder)
        return Source(copy, "", self._folder) if copy else None


def compare(source, saved, kept, folder, is_turned=False):
    """The differences between a saved file and what it should be: the pages `kept` of the source, given as
    0-based places in order."""
    copy = Source(saved, source.password, folder)
    model = source.turned if is_turned else source
    found = _faults(source, copy)
    found += _count(copy, kept)
    if model:
        found += _pages("text", model.texts, copy.texts, kept)
        found += _pixels(model, copy, kept)
    readable = source.reader and max(kept) < len(source.reader.pages)  # else qpdf cannot judge the source
    if copy.reader and readable:
        found += _lists(source.reader, copy.reader, kept)
    if copy.reader:
        found += _remains(copy.reader)
    if readable and len(kept) < len(source.reader.pages):
        found += _leaks(source, copy, kept)
    return found + _locks(source, saved)


def _faults(source, copy):
    new = copy.faults - source.faults
    return [Difference("qpdf --check", "; ".join(sorted(new))[:300])] if new else []


def _count(copy, kept):
    count = tools.qpdf_count(copy.path, copy.password)
    return [] if count == len(kept) else [Difference("page count", f"{count} instead of {len(kept)}")]


def _pages(check, before, after, kept):
    if before is None or max(kept) >= len(before):
        return []  # the tool does not read the source
    if after is None or len(after) != len(kept):
        return [Difference(check, f"{len(after or [])} pages instead of {len(kept)}")]
    wrong = [new + 1 for new, old in enumerate(kept) if after[new] != before[old]]
    return [Difference(check, f"differs on {len(wrong)} of {len(kept)} pages: {wrong[:8]}")] if wrong else []


def _pixels(model, copy, kept):
    renderer, before = model.pixels
    return _pages("pixels", before, renderer(copy.plain), kept) if before else []


def _lists(before, after, kept):
    places = _places(before, kept)
    wanted_links = [replace(link, page=new, target=_moved(link.target, places))
                    for new, old in enumerate(kept) for link in before.links() if link.page == old]
    found = _listed("links", [link for link in wanted_links if link.target], after.links())
    found += _bookmarks(before, after, places, whole=len(kept) == len(before.pages))
    found += _listed("fields", _kept_fields(before, places), after.fields())
    found += _labels(before.labels(), after.labels(), kept)
    if before.info() != after.info():
        found.append(Difference("title and author", f"{after.info()} instead of {before.info()}"))
    new_dead = len(after.dead_links()) - sum(link.page in kept for link in before.dead_links())
    if new_dead > 0:
        found.append(Difference("links", f"{new_dead} lead nowhere"))
    return found


def _places(before, kept):
    """New places by old ones. A page that stands twice in the source is known by its first place."""
    places = {}
    for new, old in enumerate(kept):
        places.setdefault(before.pages.index(before.pages[old]), new)
    return places


def _moved(target, places):
    """The target after the pages moved; None when its page is left out."""
    if target is None or target.page is None:
        return target
    return replace(target, page=places[target.page]) if target.page in places else None


def _bookmarks(before, after, places, whole):
    wanted = [replace(mark, target=_moved(mark.target, places)) for mark in before.bookmarks()]
    if whole:
        return _sequence("bookmarks", wanted, after.bookmarks())
    got = after.bookmarks()
    leading = [[(mark.title, mark.target) for mark in marks if mark.target] for marks in (wanted, got)]
    found = _sequence("bookmarks", *leading)
    empty = [mark.title for mark, following in zip(got, [*got[1:], None])
             if not mark.target and not (following and following.level > mark.level)]
    old_empty = [mark.title for mark in before.bookmarks() if not mark.target]
    left = [title for title in empty if title not in old_empty]
    return found + ([Difference("bookmarks", f"of left-out pages: {left[:SHOWN]}")] if left else [])


def _kept_fields(before, places):
    moved = [replace(field, pages=tuple(sorted(places[page] for page in field.pages if page in places)))
             for field in before.fields()]
    return [field for field in moved if field.pages]


def _labels(before, after, kept):
    wanted = None if before is None else [before[old] for old in kept]
    if wanted == after:
        return []
    if wanted is None or after is None:
        return [Difference("page labels", f"{after} instead of {wanted}"[:300])]
    return _sequence("page labels", wanted, after)


def _listed(check, wanted, got):
    """Compares without regard to order."""
    lost, extra = Counter(wanted) - Counter(got), Counter(got) - Counter(wanted)
    words = [f"{sum(entries.values())} {name}, as {list(entries)[:SHOWN]}"
             for name, entries in (("lost", lost), ("too many", extra)) if entries]
    return [Difference(check, "; ".join(words)[:600])] if words else []


def _sequence(check, wanted, got):
    if wanted == got:
        return []
    unlike = (at for at, (one, other) in enumerate(zip(wanted, got)) if one != other)
    first = next(unlike, min(len(wanted), len(got)))
    return [Difference(check, f"{len(got)} instead of {len(wanted)}; first difference at {first}: "
                              f"{got[first:first + 1]} instead of {wanted[first:first + 1]}"[:600])]


def _remains(reader):
    """Nothing may be in the file that nothing leads to, and no page beside the pages."""
    loose = reader.unreferenced()
    pages = [name for name in reader.objects if reader.get(name, "/Type") == "/Page"]
    strays = set(pages) - set(reader.pages)
    words = [f"{len(loose)} objects that nothing refers to: {loose[:SHOWN]}"] if loose else []
    words += [f"{len(strays)} page objects outside the tree"] if strays else []
    return [Difference("remains", word) for word in words]


def _leaks(source, copy, kept):
    """No stream and no string that only a left-out page had may be in the copy."""
    before, after = source.streams, _reader(copy.plain, streams=True)
    if not before or not after:
        return []
    catalogue = {key: item for key, item in before.root.items() if key not in AWAY_FROM_CATALOGUE}
    stay = before.reachable(catalogue, AWAY_FROM_CATALOGUE)
    for old in kept:
        stay |= before.reachable(before.pages[old], AWAY_FROM_PAGE)
    gone = set()
    for old in set(range(len(before.pages))) - set(kept):
        gone |= before.reachable(before.pages[old], AWAY_FROM_PAGE)
    gone -= stay
    streams = (before.stream_hashes(gone) - before.stream_hashes(stay)) & after.stream_hashes(after.objects)
    known = before.strings(stay) | before.destination_names(set(kept))
    strings = (before.strings(gone) - known) & after.strings(after.objects)
    words = [f"{len(streams)} streams of left-out pages"] if streams else []
    words += [f"strings of left-out pages: {sorted(strings)[:SHOWN]}"] if strings else []
    return [Difference("leak", word) for word in words]


def _locks(source, saved):
    if not source.password or source.path.name in ONLY_ATTACHMENTS_LOCKED:
        return [Difference("password", "the copy asks for one")] if tools.is_locked(saved) else []
    found = []
    if not tools.is_locked(saved):
        found.append(Difference("password", "the copy opens without"))
    if not tools.opens_with(saved, source.password):
        found.append(Difference("password", "the copy does not open with the source's"))
    if tools.is_locked(saved) and tools.opens_with(saved, f"not {source.password}"):
        found.append(Difference("password", "the copy opens with another"))
    return found


def _reader(path, streams=False):
    try:
        return PdfReader(path, streams=streams)
    except Unreadable:
        return None


def _drawn(path):
    for renderer in (tools.pixels, tools.poppler_pixels):
        pages = renderer(path)
        if pages:
            return renderer, pages
    return renderer, None
