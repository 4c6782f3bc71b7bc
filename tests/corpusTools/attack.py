"""Puts one file through all that the program does with documents, and tells what went wrong."""

import time
from dataclasses import dataclass

from corpusTools.driver import DriverFailed, DriverTooSlow

PICTURE_SECONDS = 30  # for each picture that is drawn
OTHER_SECONDS = 60
MEMORY = 3 << 29  # 1.5 GiB
PAGES = 3  # that are drawn
ANSWERING = 2  # seconds more, to notice that drawing took too long and to say so
PATIENCE = 1.5  # times as long, before a driver that is too slow is ended


@dataclass
class Attack:
    """How one case went."""
    case: str
    opened: bool = False
    slowest_picture: float = 0.0
    slowest_other: float = 0.0
    peak: int = 0
    finding: str = ""  # Crash, Slow or Memory
    words: str = ""  # of the finding
    has_ended: bool = False  # the process


def attack(driver, path, password, good, folder, has_limits=True):
    """Results go into the folder. Without limits, only a process that ends or hangs is found."""
    result = Attack(path.name)
    answers = {"passwords": {str(path): [password]}} if password else {}
    try:
        driver.forget_peak()
        _ask_all(driver, result, [("open", {"files": [str(path)], **answers})], has_limits)
        if result.opened:
            _ask_all(driver, result, list(_requests(path, answers, good, folder)), has_limits)
        result.peak = driver.peak()
    except DriverTooSlow as failure:
        result.finding, result.words, result.has_ended = "Slow", str(failure), True
    except DriverFailed as failure:
        result.finding, result.words, result.has_ended = "Crash", str(failure), True
    if has_limits and result.peak > MEMORY and not result.finding:
        result.finding, result.words = "Memory", f"peak of {result.peak >> 20} MiB"
    return result


def _requests(path, answers, good, folder):
    """Verb and fields, in order. Pages that are not there are answered so."""
    pages = range(1, PAGES + 1)
    yield from (("image", {"page": page, "longSide": side}) for side in (360, 2000) for page in pages)
    yield "saveAs", {"to": f"{folder}/saved.pdf", "replace": True}
    yield "turn", {"pages": [1]}
    yield "extract", {"pages": [1], "to": f"{folder}/extracted.pdf", "replace": True}
    yield "measure", {}
    yield "compress", {"choice": "small", "to": f"{folder}/small.pdf", "replace": True}
    yield "split", {"mode": "ranges", "ranges": "1", "folder": str(folder)}
    yield "mergeAdd", {}
    yield "mergeAdd", {"files": [str(path), str(good)], **answers}
    yield "merge", {"to": f"{folder}/merged.pdf", "replace": True}
    yield "mergeClear", {}
    yield from (("exportImages", {"pages": [page], "jpeg": page == 1, "dpi": 100, "folder": str(folder)}) for page in pages)
    yield "password", {"password": "secret", "to": f"{folder}/locked.pdf", "replace": True}
    yield "close", {}


def _ask_all(driver, result, requests, has_limits):
    """All are put at once, and then heard one by one."""
    for verb, fields in requests:
        driver.send(verb, **({} if "files" in fields else {"file": 0}), **fields)
    for verb, _ in requests:
        seconds = PICTURE_SECONDS if verb in ("image", "exportImages") else OTHER_SECONDS
        start = time.monotonic()
        answer = driver.receive(verb, seconds * PATIENCE if has_limits else seconds * 10)
        took = time.monotonic() - start
        _note(result, verb, answer, took, has_limits and took > seconds + ANSWERING)


def _note(result, verb, answer, took, is_slow):
    if verb == "open":
        result.opened = answer.get("outcome") == "done"
    if verb in ("image", "exportImages"):
        result.slowest_picture = max(result.slowest_picture, took)
    else:
        result.slowest_other = max(result.slowest_other, took)
    if is_slow and not result.finding:
        result.finding, result.words = "Slow", f"{verb}: {took:.0f} s"
