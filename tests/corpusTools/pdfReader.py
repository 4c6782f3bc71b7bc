"""Reads what hangs on the pages of a PDF (links, bookmarks, fields, labels), over `qpdf --json`.

Pages are named by their 0-based place, targets are resolved through named destinations, so that two files
that say the same in other ways read the same.
"""

import base64
import hashlib
import json
import re
import subprocess
from dataclasses import dataclass

DEPTH = 100  # of nested dictionaries; more is a loop
REFERENCE = re.compile(r"\d+ \d+ R")
VIEW_NUMBERS = {"/XYZ": 3, "/FitH": 1, "/FitV": 1, "/FitBH": 1, "/FitBV": 1, "/FitR": 4}
ROMAN = ((1000, "m"), (900, "cm"), (500, "d"), (400, "cd"), (100, "c"), (90, "xc"), (50, "l"), (40, "xl"),
         (10, "x"), (9, "ix"), (5, "v"), (4, "iv"), (1, "i"))
TOLD_BY_INFO = ("/Title", "/Author", "/Subject", "/Keywords")
INHERITED_BY_FIELDS = ("/FT", "/V", "/Ff")


class Unreadable(Exception):
    """qpdf cannot read the file."""


@dataclass(frozen=True)
class Target:
    """Where a link or bookmark leads: a page of the document with its view, or something else in words."""
    page: int = None
    rest: str = ""


@dataclass(frozen=True)
class Link:
    page: int
    rect: tuple
    target: Target


@dataclass(frozen=True)
class Bookmark:
    title: str
    level: int
    target: Target  # None when it leads nowhere


@dataclass(frozen=True)
class Field:
    name: str
    kind: str
    value: str
    pages: tuple


class PdfReader:
    def __init__(self, path, password="", streams=False):
        data = "inline" if streams else "none"
        command = ["qpdf", f"--password={password}", "--json=2", f"--json-stream-data={data}",
                   "--decode-level=generalized", "--json-key=qpdf", "--json-key=pages", str(path)]
        said = subprocess.run(command, capture_output=True, timeout=120)
        try:
            whole = json.loads(said.stdout.decode("utf-8", "replace"))
            bodies = whole["qpdf"][1]
            self.trailer = bodies["trailer"]["value"]
            self.objects = {name[4:]: body for name, body in bodies.items() if name.startswith("obj:")}
            self.pages = [page["object"] for page in whole["pages"]]
        except (ValueError, KeyError, IndexError) as fault:
            raise Unreadable(said.stderr.decode("utf-8", "replace").strip()[-200:] or str(fault))
        self._place = {}
        for place, page in enumerate(self.pages):
            self._place.setdefault(page, place)
        self.root = self.get(self.trailer, "/Root")
        self._names = self._named_destinations()

    def value(self, item):
        """What the item is, with references followed; a stream reads as its dictionary."""
        for _ in range(DEPTH):
            if not _is_reference(item):
                return item
            body = self.objects.get(item, {})
            item = body.get("value") if "value" in body else body.get("stream", {}).get("dict")
        return None

    def get(self, holder, *keys):
        for key in keys:
            holder = self.value(holder)
            holder = holder.get(key) if isinstance(holder, dict) else None
        return self.value(holder)

    def array(self, holder, *keys):
        found = self.get(holder, *keys)
        return found if isinstance(found, list) else []

    def links(self):
        """The links that lead somewhere, by page and place."""
        return [link for link in self._all_links() if link.target]

    def dead_links(self):
        return [link for link in self._all_links() if not link.target]

    def bookmarks(self):
        found, seen = [], set()
        self._walk_bookmarks(self._raw(self.root, "/Outlines"), 0, found, seen)
        return found

    def fields(self):
        """The fields that have a widget on a page, by name."""
        found, seen = {}, set()
        for reference in self.array(self.root, "/AcroForm", "/Fields"):
            self._walk_field(reference, "", {}, found, seen)
        return [Field(*said, tuple(sorted(pages))) for said, pages in sorted(found.items()) if pages]

    def labels(self):
        """The label of each page; none when the document has no labels."""
        starts = {}
        self._walk_tree(self._raw(self.root, "/PageLabels"), "/Nums", starts, set())
        starts = {place: entry for place, entry in starts.items() if isinstance(place, int)}
        if not starts:
            return None
        return [self._label(place, starts) for place in range(len(self.pages))]

    def destination_names(self, kept):
        """The names of destinations on the pages `kept` (places), as string objects."""
        targets = {name: self._destination(target) for name, target in self._names.items()}
        return {name for name, target in targets.items() if target and target.page in kept}

    def info(self):
        """Title, author, subject and keywords, as far as they say something."""
        found = {key: words(self.get(self.trailer, "/Info", key)) for key in TOLD_BY_INFO}
        return {key: said for key, said in found.items() if said}

    def unreferenced(self):
        """Objects that nothing in the file leads to."""
        reached = self.reachable(self.trailer)
        loose = [name for name in self.objects if name not in reached and self.value(name) is not None]
        return sorted(name for name in loose if self.get(name, "/Type") not in ("/ObjStm", "/XRef"))

    def reachable(self, start, skip=()):
        """The names of the objects that `start` leads to. With `skip`, neither those keys nor other pages are
        followed."""
        reached, waiting = set(), [start]
        stop = set(self.pages) if skip else set()
        while waiting:
            item = waiting.pop()
            if _is_reference(item):
                if item in reached or (item in stop and item != start):
                    continue
                reached.add(item)
                waiting.append(self.value(item))
            elif isinstance(item, dict):
                waiting.extend(below for key, below in item.items() if key not in skip)
            elif isinstance(item, list):
                waiting.extend(item)
        return reached

    def stream_hashes(self, names):
        """The decoded contents of those of the objects that are streams, as digests; needs `streams`."""
        bodies = (self.objects.get(name, {}).get("stream", {}).get("data") for name in names)
        return {hashlib.md5(base64.b64decode(body)).hexdigest() for body in bodies if body and len(body) > 40}

    def strings(self, names):
        """The text strings of at least five letters in the objects."""
        found, waiting = set(), [self.value(name) for name in names]
        while waiting:
            item = waiting.pop()
            if isinstance(item, dict):
                waiting.extend(item.values())
            elif isinstance(item, list):
                waiting.extend(item)
            elif isinstance(item, str) and item.startswith("u:") and len(item) >= 7:
                found.add(item)
        return found

    def _raw(self, holder, key):
        holder = self.value(holder)
        return holder.get(key) if isinstance(holder, dict) else None

    def _all_links(self):
        found = []
        for place, page in enumerate(self.pages):
            for annotation in self.array(page, "/Annots"):
                if self.get(annotation, "/Subtype") == "/Link":
                    rect = tuple(_rounded(self.value(number)) for number in self.array(annotation, "/Rect"))
                    found.append(Link(place, rect, self._target(annotation)))
        return found

    def _target(self, holder):
        """Where a link or bookmark leads, or None."""
        action = self.get(holder, "/A")
        kind = self.get(action, "/S")
        if kind == "/GoTo":
            return self._destination(self.get(action, "/D"))
        if kind == "/URI":
            return Target(rest=f"URI {words(self.get(action, '/URI'))}")
        if kind:
            return Target(rest=json.dumps(self._told(action, set()), sort_keys=True))
        return self._destination(self.get(holder, "/Dest"))

    def _destination(self, destination, depth=0):
        destination = self.value(destination)
        if isinstance(destination, dict):
            destination = self.get(destination, "/D")
        if isinstance(destination, str) and depth < DEPTH:
            return self._destination(self._names.get(destination), depth + 1)
        if not isinstance(destination, list) or not destination:
            return None
        page = self._page_of(destination[0])
        return None if page is None else Target(page, self._view(destination[1:]))

    def _page_of(self, item):
        if isinstance(item, int):
            return item if 0 <= item < len(self.pages) else None
        return self._place.get(item) if _is_reference(item) else None

    def _view(self, rest):
        """The view in words; numbers left out read as null."""
        kind = self.value(rest[0]) if rest else "/Fit"
        numbers = [_rounded(self.value(number)) for number in rest[1:]]
        numbers += [None] * (VIEW_NUMBERS.get(kind, 0) - len(numbers))
        return " ".join(str(part) for part in [kind, *numbers])

    def _named_destinations(self):
        found = {}
        old = self.get(self.root, "/Dests")
        if isinstance(old, dict):
            found.update(old)
        tree = {}
        self._walk_tree(self._raw(self.get(self.root, "/Names"), "/Dests"), "/Names", tree, set())
        found.update({name: target for name, target in tree.items() if isinstance(name, str)})
        return found

    def _walk_tree(self, node, leaves, found, seen):
        """Gathers a name or number tree."""
        if _is_reference(node):
            if node in seen:
                return
            seen.add(node)
        pairs = self.array(node, leaves)
        for key, target in zip(pairs[::2], pairs[1::2]):
            found.setdefault(self.value(key), target)
        for kid in self.array(node, "/Kids"):
            self._walk_tree(kid, leaves, found, seen)

    def _walk_bookmarks(self, parent, level, found, seen):
        item = self._raw(parent, "/First")
        while _is_reference(item) and item not in seen:
            seen.add(item)
            found.append(Bookmark(words(self.get(item, "/Title")), level, self._target(item)))
            self._walk_bookmarks(item, level + 1, found, seen)
            item = self._raw(item, "/Next")

    def _walk_field(self, reference, prefix, above, found, seen):
        field = self.value(reference)
        if not isinstance(field, dict) or (_is_reference(reference) and reference in seen):
            return
        seen.add(reference if _is_reference(reference) else id(field))
        own = words(self.get(field, "/T"))
        name = ".".join(part for part in (prefix, own) if part)
        here = {**above, **{key: self.get(field, key) for key in INHERITED_BY_FIELDS if key in field}}
        kids = self.array(field, "/Kids")
        for kid in kids:
            self._walk_field(kid, name, here, found, seen)
        if not kids:
            kind, value = here.get("/FT"), self._field_value(here)
            pages = found.setdefault((name, str(kind), value), [])
            pages.extend(self._pages_of_widget(reference))

    def _field_value(self, field):
        value = field.get("/V")
        if field.get("/FT") == "/Sig" or value is None:
            return ""
        return json.dumps(self._told(value, set()), sort_keys=True, ensure_ascii=False)

    def _pages_of_widget(self, reference):
        if not hasattr(self, "_page_of_annotation"):
            self._page_of_annotation = {}
            for place, page in enumerate(self.pages):
                for annotation in self.array(page, "/Annots"):
                    if _is_reference(annotation):
                        self._page_of_annotation.setdefault(annotation, []).append(place)
        return self._page_of_annotation.get(reference, []) if _is_reference(reference) else []

    def _told(self, item, seen):
        """The item with references followed, pages as their places, and loops cut."""
        if _is_reference(item):
            if item in self._place:
                return f"page {self._place[item]}"
            if item in seen:
                return "…"
            seen = seen | {item}
        item = self.value(item)
        if isinstance(item, dict):
            told = {key: below for key, below in item.items() if key not in ("/Parent", "/P", "/Length")}
            return {key: self._told(below, seen) for key, below in told.items()}
        if isinstance(item, list):
            return [self._told(below, seen) for below in item]
        return words(item) if isinstance(item, str) and item[:2] in ("u:", "b:") else item

    def _label(self, place, starts):
        first = max((start for start in starts if start <= place), default=None)
        if first is None:
            return str(place + 1)
        entry = starts[first]
        number = (self.get(entry, "/St") or 1) + place - first
        return words(self.get(entry, "/P")) + _numbered(number, self.get(entry, "/S"))


def words(item):
    """A string object as text; anything else as nothing."""
    if not isinstance(item, str):
        return ""
    if item.startswith("u:"):
        return item[2:]
    return "hex " + item[2:] if item.startswith("b:") else ""


def _is_reference(item):
    return isinstance(item, str) and REFERENCE.fullmatch(item) is not None


def _rounded(number):
    return round(number, 2) if isinstance(number, (int, float)) else number


def _numbered(number, style):
    if style in ("/R", "/r"):
        return _roman(number).upper() if style == "/R" else _roman(number)
    if style in ("/A", "/a"):
        letters = chr(ord("a") + (number - 1) % 26) * ((number - 1) // 26 + 1)
        return letters.upper() if style == "/A" else letters
    return str(number) if style == "/D" else ""


def _roman(number):
    said = ""
    for worth, letters in ROMAN:
        said += letters * (number // worth)
        number %= worth
    return said
