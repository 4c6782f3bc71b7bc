"""Examines the compression of one document: the sizes told, what is saved for them, and what other programs see in it."""

import tempfile
from dataclasses import dataclass, field
from pathlib import Path

from corpusTools import appearance
from corpusTools import outsideTools as tools
from corpusTools.driver import DriverFailed
from corpusTools.passwords import PASSWORDS
from corpusTools.seenFile import SeenFile

CHOICES = ("original", "medium", "small")
LIMITS = (1, 200_000, 1_000_000, 5_000_000)  # bytes; beside them those at the edges of the measured sizes
# On the difference of a tile's mean, of 255. JPEG alone moves that of small bright pictures by 13; dense
# hairlines, which Poppler draws no thinner than a pixel, that of small pages by 32. Losses move it far more.
TEXT_BOUND, PICTURE_BOUND = 20, 40


@dataclass
class Report:
    name: str
    skipped: str = ""
    limits: int = 0
    largest_difference: float = 0
    faults: list = field(default_factory=list)

    def check(self, holds, words):
        if not holds:
            self.faults.append(words)


def examine(start, path):
    report = Report(path.name)
    with tempfile.TemporaryDirectory(prefix="folvane-compressions-") as folder:
        try:
            with start() as session:
                _examine(session.ask, path, PASSWORDS.get(path.name, ""), Path(folder), report)
        except DriverFailed as failure:
            report.faults.append(str(failure))
    return report


def _examine(ask, path, password, folder, report):
    opened = ask("open", files=[str(path)], passwords={str(path): [password] if password else []})
    if not ask("state")["documents"]:
        report.skipped = "it wants a password" if opened["prompts"] else "it does not open"
        return
    measured = ask("measure", file=0)
    if measured["outcome"] != "done":
        report.faults.append(f"not measured: {measured['error']}")
        return
    known = tools.faults(path, password) if path.suffix == ".pdf" else set()
    original = _saved(ask, folder, password, choice="original")
    for choice in CHOICES:
        copy = _saved(ask, folder, password, choice=choice)
        report.check(copy.size == measured[choice] == copy.told["bytes"],
                     f"{choice} has {copy.size} bytes, {measured[choice]} were measured")
        report.check(copy.size <= original.size, f"{choice} is larger than the original")
        _compare(choice, copy, original, known, report)
    for limit in sorted({*LIMITS, *(measured[choice] + more for choice in CHOICES for more in (-1, 0))}):
        copy = _saved(ask, folder, password, limit=limit)
        report.limits += 1
        report.check(copy.told["reached"] == (copy.size <= limit), f"{limit} has {copy.size} bytes, told otherwise")
        report.check(copy.told["reached"] or measured["small"] > limit, f"{limit} is not reached, but small would fit")
        _compare(f"{limit} bytes", copy, original, known, report)


def _saved(ask, folder, password, **wanted):
    target = folder / f"{'-'.join(map(str, wanted.values()))}.pdf"
    answer = ask("compress", file=0, to=str(target), **wanted)
    if answer["outcome"] != "done":
        raise DriverFailed(f"{wanted}: {answer['outcome']}: {answer['error']}")
    copy = SeenFile(target, password, folder)
    copy.told, copy.size = answer, target.stat().st_size
    return copy


def _compare(name, copy, original, known_faults, report):
    pictures = copy.told["pagesAsPictures"]
    report.check(copy.faults <= known_faults, f"{name}: qpdf finds {sorted(copy.faults - known_faults)}"[:200])
    report.check(copy.is_locked == original.is_locked, f"{name}: the password is not the original's")
    report.check(copy.sizes and copy.sizes == original.sizes, f"{name}: pages {copy.sizes[:3]}, not {original.sizes[:3]}")
    words = copy.texts == original.texts if not pictures else not any(map(str.strip, copy.texts or ["?"]))
    report.check(words, f"{name}: the text is another one")
    report.check(len(copy.drawn) == len(original.drawn), f"{name}: MuPDF draws {len(copy.drawn)} pages")
    for page, (before, after) in enumerate(zip(original.drawn, copy.drawn), 1):
        bound = PICTURE_BOUND if pictures else TEXT_BOUND
        difference = appearance.difference(before, after)
        if difference > bound:
            difference = appearance.large_difference(original.plain, copy.plain, page, pictures)
        report.largest_difference = max(report.largest_difference, difference)
        report.check(difference <= bound, f"{name}, page {page}: a tile differs by {difference:.0f}")
        report.check(not appearance.became_blank(before, after), f"{name}, page {page} is blank")
