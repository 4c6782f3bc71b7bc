"""Examines the compression of one document: the sizes told, what is saved for a limit, what is in it."""

import tempfile
from collections import Counter
from dataclasses import dataclass, field
from pathlib import Path

from corpusTools import appearance
from corpusTools import outsideTools as tools
from corpusTools.driver import DriverFailed
from corpusTools.ladders import (CHOICES, PICTURE_RUNGS, RUNGS, TEXT_RUNGS, answers, falls, limits_to_try,
                                 overlooked)
from corpusTools.passwords import PASSWORDS
from corpusTools.savedCopy import Copy

ORIGINAL = TEXT_RUNGS[0]
QUICKLY_SEEN = (ORIGINAL, TEXT_RUNGS[1], TEXT_RUNGS[7], PICTURE_RUNGS[0], PICTURE_RUNGS[7])
# On the difference of a tile's mean, of 255. JPEG alone moves that of small bright pictures by 13; dense
# hairlines, which Poppler draws no thinner than a pixel, that of small pages by 32. Losses move it far more.
TEXT_BOUND, PICTURE_BOUND = 20, 40
TOLD = 3  # faults of one kind that a report quotes


@dataclass
class Report:
    name: str
    skipped: str = ""
    locked: bool = False
    uneven: bool = False
    unseen: bool = False
    rungs: int = 0
    limits: int = 0
    overlooked: int = 0  # limits that a rung fits which the search cannot see
    answers: Counter = field(default_factory=Counter)
    text_difference: float = 0
    picture_difference: float = 0
    faults: list = field(default_factory=list)  # (check, words)

    def note(self, check, words):
        self.faults.append((check, words))

    def told(self):
        """The faults in one line."""
        by_check = {}
        for check, words in self.faults:
            by_check.setdefault(check, []).append(words)
        return "; ".join(f"{check}: {_first_of(words)}" for check, words in by_check.items())


class Cannot(Exception):
    """The document does not open; says why."""


def examine(start, quick, path):
    report = Report(path.name)
    with tempfile.TemporaryDirectory(prefix="folvane-compressions-") as folder:
        examination = Examination(start, quick, path, Path(folder), report)
        try:
            examination.run()
        except Cannot as reason:
            report.skipped = str(reason)
        except DriverFailed as failure:
            report.note("crash or hang", str(failure))
    return report


class Examination:
    def __init__(self, start, quick, path, folder, report):
        self._start = start
        self._quick = quick
        self._path = str(path)
        self._password = PASSWORDS.get(path.name, "")
        self._folder = folder
        self._report = report
        self._rungs = {}  # Rung: Copy

    def run(self):
        self._build_rungs()
        if len(self._rungs) < len(RUNGS):
            return
        sizes = {rung: copy.size for rung, copy in self._rungs.items()}
        ladders = ([sizes[rung] for rung in ladder] for ladder in (TEXT_RUNGS, PICTURE_RUNGS))
        self._report.uneven = not all(map(falls, ladders))
        self._measure_and_save(sizes)
        self._look()

    def _build_rungs(self):
        """Each rung alone, in a driver that has measured nothing; from below, as order must not matter."""
        with self._start() as session:
            self._open(session.ask)
            for rung in reversed(RUNGS):
                target = self._folder / f"{rung}.pdf"
                answer = session.ask("compress", file=0, to=str(target), **rung.request())
                if answer["outcome"] != "done" or not target.exists():
                    self._report.note("rung", f"{rung} {answer['outcome']}: {answer['error']}")
                    continue
                self._rungs[rung] = Copy(target, self._password)
        self._report.rungs = len(self._rungs)

    def _measure_and_save(self, sizes):
        """As the sheet does it: measure, then save by choice or by limit."""
        with self._start() as session:
            self._open(session.ask)
            measured = session.ask("measure", file=0)
            if measured["outcome"] != "done":
                self._report.note("measure", f"{measured['outcome']}: {measured['error']}")
                return
            for choice in CHOICES:
                self._check_choice(session.ask, choice, measured)
            limits = limits_to_try(sizes, self._quick)
            self._report.limits = len(limits)
            self._report.overlooked = sum(overlooked(limit, sizes) for limit in limits)
            for limit in limits:
                self._check_limit(session.ask, limit, sizes)

    def _check_choice(self, ask, choice, measured):
        note, told = self._report.note, measured[choice]
        if told > measured["original"]:
            note("weight", f"{choice} has {told} bytes, the original {measured['original']}")
        answer, saved = self._save(ask, choice=choice)
        if not saved:
            return
        alone = self._rungs[TEXT_RUNGS[CHOICES[choice]]]
        if not saved.size == told == answer["bytes"]:
            note("measured size", f"{choice} has {saved.size} bytes, {told} were measured")
        if not self._same(saved, alone):
            note("measured size", f"{choice}, {saved.size} bytes, is not the rung built alone, {alone.size}")

    def _check_limit(self, ask, limit, sizes):
        answer, saved = self._save(ask, limit=limit)
        if not saved:
            return
        note, allowed = self._report.note, answers(limit, sizes)
        fits = sizes[allowed[0]] <= limit
        if fits and saved.size > limit:
            note("limit", f"{saved.size} bytes for {limit}, which {allowed[0]} fits")
        if answer["reached"] != (saved.size <= limit):
            note("limit", f"{limit} told as reached is {answer['reached']} with {saved.size} bytes")
        found = [rung for rung in allowed if self._same(saved, self._rungs[rung])]
        if not found:
            got = next((str(rung) for rung in RUNGS if self._same(saved, self._rungs[rung])), "no rung")
            note("rung of a limit", f"{limit} gives {got} with {saved.size} bytes instead of {allowed[0]} "
                                    f"with {sizes[allowed[0]]}")
            return
        if answer["pagesAsPictures"] not in {rung.pictures for rung in found}:
            note("pages as pictures", f"told as {answer['pagesAsPictures']} of {found[0]}")
        kind = "pictures" if found[0].pictures else "text kept" if found[0].index else "as it is"
        self._report.answers[kind if fits else "out of reach"] += 1

    def _save(self, ask, **wanted):
        target = self._folder / "saved.pdf"
        target.unlink(missing_ok=True)
        answer = ask("compress", file=0, to=str(target), **wanted)
        if answer["outcome"] == "done" and target.exists():
            return answer, Copy(target, self._password)
        self._report.note("saves", f"{wanted} {answer['outcome']}: {answer['error']}")
        return answer, None

    def _same(self, one, other):
        return one.size == other.size and (self._report.locked or one.digest == other.digest)

    def _look(self):
        """What other programs see in the rungs; in those that are the same file, once."""
        original = self._rungs[ORIGINAL]
        is_pdf = self._path.lower().endswith(".pdf")
        source_faults = tools.faults(self._path, self._password) if is_pdf else set()
        seen = set()
        for rung in RUNGS:
            copy = self._rungs[rung]
            if copy.digest in seen or (self._quick and rung not in QUICKLY_SEEN):
                continue
            seen.add(copy.digest)
            new_faults = sorted(copy.faults - source_faults)
            if new_faults:
                self._report.note("qpdf --check", f"{rung}: {'; '.join(new_faults)[:200]}")
            if tools.is_locked(copy.path) != self._report.locked:
                does = "opens without" if self._report.locked else "wants one"
                self._report.note("password", f"{rung} {does}")
            if copy.pages != original.pages or not copy.pages:
                self._report.note("page count", f"{rung} has {copy.pages}, the original {original.pages}")
            elif rung != ORIGINAL:
                self._compare(rung, copy, original)
                copy.forget_pages()

    def _compare(self, rung, copy, original):
        if copy.sizes != original.sizes or len(copy.sizes) != copy.pages:
            self._report.note("page size", f"{rung}: {_first_unlike(copy.sizes, original.sizes)}")
        if copy.texts is None:
            self._report.note("text", f"{rung}: pdftotext cannot read it")
        elif rung.pictures and any(map(str.strip, copy.texts)):
            self._report.note("text", f"{rung} still has text")
        elif not rung.pictures and copy.texts != original.texts:
            self._report.note("text", f"{rung} has other text")
        self._compare_looks(rung, copy, original)

    def _compare_looks(self, rung, copy, original):
        if len(original.mupdf_pages) != original.pages:
            self._report.unseen = True
            return
        if len(copy.mupdf_pages) != copy.pages:
            drawn = f"{len(copy.mupdf_pages)} of {copy.pages}"
            self._report.note("looks", f"{rung}: MuPDF draws {drawn} pages")
            return
        kind = "picture_difference" if rung.pictures else "text_difference"
        bound = PICTURE_BOUND if rung.pictures else TEXT_BOUND
        for at, (before, after) in enumerate(zip(original.mupdf_pages, copy.mupdf_pages)):
            difference = appearance.difference(before, after)
            if difference > bound:
                difference = appearance.large_difference(original.plain, copy.plain, at + 1, _eyes(rung))
            setattr(self._report, kind, max(getattr(self._report, kind), difference))
            if difference > bound:
                self._report.note("looks", f"{rung}, page {at + 1}: a tile differs by {difference:.0f}")
            if appearance.became_blank(before, after):
                self._report.note("blank page", f"{rung}, page {at + 1}")

    def _open(self, ask):
        passwords = [self._password] if self._password else []
        answer = ask("open", files=[self._path], passwords={self._path: passwords})
        documents = [document for document in ask("state")["documents"] if document["pages"]]
        if not documents:
            wants = "it wants a password" if answer["prompts"] else answer["outcome"]
            raise Cannot((answer["error"] or wants).replace(Path(self._path).name, "…"))
        self._report.locked = bool(self._password)


def _eyes(rung):
    """What draws the page to compare with. Pictures are drawn by Poppler, which may see another page."""
    return (appearance.by_mupdf, appearance.by_poppler) if rung.pictures else (appearance.by_mupdf,)


def _first_of(words):
    more = f" and {len(words) - TOLD} more" if len(words) > TOLD else ""
    return ", ".join(words[:TOLD]) + more


def _first_unlike(one, other):
    return next((f"page {at + 1} is {a}, was {b}" for at, (a, b) in enumerate(zip(one, other)) if a != b),
                f"{len(one)} instead of {len(other)}")
