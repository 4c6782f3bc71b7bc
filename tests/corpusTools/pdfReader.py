"""Tells what hangs on the pages of a PDF (links, bookmarks, fields, labels), by what qpdf's JSON says of it. Pages are
known by their 0-based places and targets through named destinations, so that a copy reads as its source."""

import base64
import hashlib
import json
import re
from dataclasses import dataclass

from corpusTools.outsideTools import run

DEPTH = 100  # of names and references; more is a loop
REFERENCE = re.compile(r"\d+ \d+ R")
TOLD_BY_INFO = ("/Title", "/Author", "/Subject", "/Keywords")


@dataclass(frozen=True)
class Target:
    """Where a link or bookmark leads: a page of the document with its view, or something else in words."""
    page: int = None
    rest: str = ""


@dataclass(frozen=True)
class Mark:
    """A link (on the page of that place, at the rectangle) or a bookmark (at its level, of that title)."""
    place: int
    what: str
    target: Target  # None when it leads nowhere


class PdfReader:
    @staticmethod
    def of(path, streams=False):
        """None when qpdf cannot read the file."""
        keys = [f"--json-key={key}" for key in ("qpdf", "pages")]
        data = f"--json-stream-data={'inline' if streams else 'none'}"
        said = run("qpdf", "--json=2", data, "--decode-level=generalized", *keys, path)[1]
        try:
            return PdfReader(json.loads(said))
        except (ValueError, KeyError, IndexError):
            return None

    def __init__(self, whole):
        self._whole = whole
        bodies = whole["qpdf"][1]
        self.trailer = bodies["trailer"]["value"]
        self.objects = {name[4:]: body for name, body in bodies.items() if name.startswith("obj:")}
        self.pages = [page["object"] for page in self._whole["pages"]]
        self._place = {page: place for place, page in reversed(list(enumerate(self.pages)))}
        self.root = self.get(self.trailer, "/Root")
        self._names = {**(self.get(self.root, "/Dests") or {}), **self._tree(self.get(self.root, "/Names", "/Dests"))}

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

    def links(self):
        annotations = ((place, annotation) for place, page in enumerate(self.pages)
                       for annotation in self.get(page, "/Annots") or [])
        return [Mark(place, str(self._told(self.get(annotation, "/Rect"))), self._target(annotation))
                for place, annotation in annotations if self.get(annotation, "/Subtype") == "/Link"]

    def bookmarks(self):
        """In their order; those of a loop once."""
        found = {}
        self._walk_bookmarks(self.get(self.root, "/Outlines"), 0, found)
        return list(found.values())

    def fields(self):
        """Name, kind and value of each widget on a page, with the place of that page. Signatures keep no value."""
        places = {}
        for place, page in enumerate(self.pages):
            for annotation in self.get(page, "/Annots") or []:
                places.setdefault(str(annotation), []).append(place)
        widgets = self._widgets(self.get(self.root, "/AcroForm", "/Fields"), "", {}, set())
        return [(field, place) for widget, field in widgets for place in places.get(widget, [])]

    def labels(self):
        """Style, prefix and number of each page; where the document says nothing, those that pages have by themselves."""
        told = [page["label"] or {"/S": "/D", "/St": place + 1} for place, page in enumerate(self._whole["pages"])]
        return [(label.get("/S"), label.get("/P", "u:"), label.get("/S") and label.get("/St", 1)) for label in told]

    def destination_names(self, kept):
        """The names of destinations on the pages `kept` (places), as string objects."""
        targets = {name: self._destination(target) for name, target in self._names.items()}
        return {name for name, target in targets.items() if target and target.page in kept}

    def info(self):
        """Title, author, subject and keywords, as far as they say something."""
        found = {key: self.get(self.trailer, "/Info", key) for key in TOLD_BY_INFO}
        return {key: said for key, said in found.items() if said and said != "u:"}

    def reachable(self, start, skip=()):
        """The names of the objects that `start` leads to. With `skip`, neither those keys nor other pages are followed."""
        reached, waiting = set(), [start]
        stop = {page for page in self.pages if skip and page != start}
        while waiting:
            item = waiting.pop()
            if _is_reference(item) and item not in reached and item not in stop:
                reached.add(item)
                waiting.append(self.objects.get(item, {}))
            elif isinstance(item, dict):
                waiting.extend(below for key, below in item.items() if key not in (*skip, "data"))
            elif isinstance(item, list):
                waiting.extend(item)
        return reached

    def unreferenced(self):
        """Objects that nothing in the file leads to."""
        loose = set(self.objects) - self.reachable(self.trailer)
        return sorted(name for name in loose
                      if self.value(name) is not None and self.get(name, "/Type") not in ("/ObjStm", "/XRef"))

    def stream_hashes(self, names):
        """The decoded contents of those of the objects that are streams, as digests; needs `streams`."""
        bodies = (self.objects.get(name, {}).get("stream", {}).get("data") for name in names)
        return {hashlib.md5(base64.b64decode(body)).hexdigest() for body in bodies if body and len(body) > 40}

    def strings(self, names):
        """The text strings of at least five letters in the objects."""
        told = json.dumps([self.value(name) for name in names], ensure_ascii=False)
        return {string for string in re.findall(r'"(u:(?:[^"\\]|\\.){5,})"', told)}

    def _walk_bookmarks(self, parent, level, found):
        item = (parent or {}).get("/First")
        while _is_reference(item) and item not in found:
            found[item] = Mark(level, self.get(item, "/Title"), self._target(item))
            self._walk_bookmarks(self.value(item), level + 1, found)
            item = (self.value(item) or {}).get("/Next")

    def _widgets(self, kids, prefix, above, seen):
        """The fields without kids below, as reference and what they are; those of a loop once."""
        for kid in kids or []:
            field = self.value(kid)
            if not isinstance(field, dict) or str(kid) in seen:
                continue
            seen.add(str(kid))
            name = ".".join(part for part in (prefix, self.get(field, "/T")) if part)
            here = {**above, **{key: self.get(field, key) for key in ("/FT", "/V") if key in field}}
            value = here.get("/FT") != "/Sig" and json.dumps(self._told(here.get("/V")))
            if not self.get(field, "/Kids"):
                yield str(kid), (name, here.get("/FT"), value)
            yield from self._widgets(self.get(field, "/Kids"), name, here, seen)

    def _target(self, holder):
        action = self.get(holder, "/A")
        kind = self.get(action, "/S")
        if kind and kind != "/GoTo":
            return Target(rest=json.dumps(self._told(action), sort_keys=True))
        return self._destination(self.get(action, "/D") if kind else self.get(holder, "/Dest"))

    def _destination(self, destination, depth=0):
        destination = self.value(destination)
        if isinstance(destination, dict):
            destination = self.get(destination, "/D")
        if isinstance(destination, str) and depth < DEPTH:
            return self._destination(self._names.get(destination), depth + 1)
        if not isinstance(destination, list) or not destination:
            return None
        page = destination[0]
        place = page if isinstance(page, int) and page < len(self.pages) else self._place.get(page)
        return None if place is None else Target(place, str(self._told(destination[1:])))

    def _tree(self, root):
        """What is in a name tree."""
        found, seen, waiting = {}, set(), [root]
        while waiting:
            node = waiting.pop(0)
            if str(node) not in seen:
                seen.add(str(node))
                pairs = [self.value(item) if at % 2 == 0 else item for at, item in enumerate(self.get(node, "/Names") or [])]
                found |= {key: target for key, target in zip(pairs[::2], pairs[1::2]) if isinstance(key, str)}
                waiting += self.get(node, "/Kids") or []
        return found

    def _told(self, item, seen=()):
        """The item with references followed, pages as their places, and loops cut."""
        if _is_reference(item):
            if item in self._place:
                return f"page {self._place[item]}"
            return "…" if item in seen else self._told(self.value(item), (*seen, item))
        if isinstance(item, dict):
            return {key: self._told(below, seen) for key, below in item.items() if key not in ("/Parent", "/P", "/Length")}
        if isinstance(item, list):
            return [self._told(below, seen) for below in item]
        return round(item, 2) if isinstance(item, float) else item


def _is_reference(item):
    return isinstance(item, str) and REFERENCE.fullmatch(item) is not None
