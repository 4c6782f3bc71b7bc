"""Compares a saved file with its source: what the copy must still have, and what it must have no more."""

from collections import Counter
from dataclasses import replace

from corpusTools import outsideTools as tools
from corpusTools.passwords import ONLY_ATTACHMENTS_LOCKED
from corpusTools.seenFile import SeenFile

AWAY_FROM_PAGE = ("/Parent", "/P", "/Dest", "/A", "/B", "/StructParents", "/Popup", "/IRT")
AWAY_FROM_CATALOGUE = ("/Pages", "/Outlines", "/Names", "/Dests", "/Fields", "/StructTreeRoot")
SHOWN = 3  # differing entries that a report quotes


def compare(source, count, saved, kept, folder, is_turned=False):
    """The differences (check, words) between a saved file and what it should be: the pages `kept` of the source's
    `count`, given as 0-based places in order."""
    copy = SeenFile(saved, source.password, folder)
    found = _words("qpdf --check", "new faults", copy.faults - source.faults)
    if copy.count != len(kept):
        found.append(("page count", f"{copy.count} instead of {len(kept)}"))
    if model := source.turned if is_turned else source:
        found += _pages("text", model.texts, copy.texts, kept)
        drawn, renderer = model.pixels
        found += _pages("pixels", drawn, drawn and renderer(copy.plain), kept)
    readable = source.reader and len(source.reader.pages) == count  # else qpdf cannot judge the source
    if copy.reader and readable:
        found += _lists(source.reader, copy.reader, kept)
    if copy.reader:
        found += _remains(copy.reader)
    if readable and len(kept) < count:
        found += _leaks(source.streams, copy.streams, kept)
    return found + _locks(source, copy)


def _pages(check, before, after, kept):
    if before is None or max(kept) >= len(before):
        return []  # the tool does not read the source
    if after is None or len(after) != len(kept):
        return [(check, f"{len(after or [])} pages instead of {len(kept)}")]
    wrong = [new + 1 for new, old in enumerate(kept) if after[new] != before[old]]
    return [(check, f"differs on {len(wrong)} of {len(kept)} pages: {wrong[:8]}")] if wrong else []


def _lists(before, after, kept):
    """Differences of what hangs on the pages; what leads to a left-out page is to go."""
    places = {before.pages.index(before.pages[old]): new for new, old in reversed(list(enumerate(kept)))}
    whole = len(kept) == len(before.pages)
    links = [link for link in before.links() if link.target]
    wanted = [replace(link, place=new, target=_moved(link.target, places))
              for new, old in enumerate(kept) for link in links if link.place == old]
    found = _listed("links", [link for link in wanted if link.target], [link for link in after.links() if link.target])
    found += _bookmarks([replace(mark, target=_moved(mark.target, places)) for mark in before.bookmarks()],
                        after.bookmarks(), whole)
    found += _listed("fields", [(field, places[page]) for field, page in before.fields() if page in places],
                     after.fields())
    if before.info() != after.info():
        found.append(("title and author", f"{after.info()} instead of {before.info()}"))
    dead = len([link for link in after.links() if not link.target])
    if dead > sum(not link.target and link.place in kept for link in before.links()):
        found.append(("links", f"{dead} lead nowhere"))
    return found + _sequence("page labels", _labels(before, kept), after.labels())


def _moved(target, places):
    """The target after the pages moved; None when its page is left out."""
    if target is None or target.page is None:
        return target
    return replace(target, page=places[target.page]) if target.page in places else None


def _bookmarks(wanted, got, whole):
    """Of some of the pages, those stay that lead to one, and those above them, which may lead nowhere."""
    if whole:
        return _sequence("bookmarks", wanted, got)
    leading = [[(mark.what, mark.target) for mark in marks if mark.target] for marks in (wanted, got)]
    left = [mark.what for mark, following in zip(got, [*got[1:], None])
            if not mark.target and not (following and following.place > mark.place)]
    stale = [title for title in left if title not in [mark.what for mark in wanted if not mark.target]]
    return _sequence("bookmarks", *leading) + _words("bookmarks", "of left-out pages", stale)


def _labels(before, kept):
    """A document without labels counts its pages anew."""
    labels = before.labels()
    return [labels[old] for old in kept] if before.get(before.root, "/PageLabels") else labels[:len(kept)]


def _words(check, words, found):
    return [(check, f"{len(found)} {words}: {sorted(found)[:SHOWN]}")] if found else []


def _listed(check, wanted, got):
    """Compares without regard to order."""
    lost, extra = Counter(wanted) - Counter(got), Counter(got) - Counter(wanted)
    words = [f"{sum(entries.values())} {name}, as {list(entries)[:SHOWN]}"
             for name, entries in (("lost", lost), ("too many", extra)) if entries]
    return [(check, "; ".join(words)[:600])] if words else []


def _sequence(check, wanted, got):
    if wanted == got:
        return []
    unlike = (at for at, (one, other) in enumerate(zip(wanted, got)) if one != other)
    first = next(unlike, min(len(wanted), len(got)))
    return [(check, f"{len(got)} instead of {len(wanted)}; first difference at {first}: "
                    f"{got[first:first + 1]} instead of {wanted[first:first + 1]}"[:600])]


def _remains(reader):
    """Nothing may be in the file that nothing leads to, and no page beside the pages."""
    pages = {name for name in reader.objects if reader.get(name, "/Type") == "/Page"}
    return (_words("remains", "objects that nothing refers to", reader.unreferenced())
            + _words("remains", "page objects outside the tree", pages - set(reader.pages)))


def _leaks(before, after, kept):
    """No stream and no string that only a left-out page had may be in the copy."""
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
    return _words("leak", "streams of left-out pages", streams) + _words("leak", "strings of left-out pages", strings)


def _locks(source, copy):
    if not source.password or source.path.name in ONLY_ATTACHMENTS_LOCKED:
        return [("password", "the copy asks for one")] if copy.is_locked else []
    faults = {"the copy opens without": not copy.is_locked,
              "the copy does not open with the source's": not copy.count,
              "the copy opens with another": tools.qpdf_count(copy.path, f"not {source.password}")}
    return [("password", words) for words, holds in faults.items() if holds]
