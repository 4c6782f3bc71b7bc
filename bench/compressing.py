"""Compression of ten documents full of pictures, against Ghostscript and against itself."""

import os
from contextlib import contextmanager
from statistics import mean, median

from corpusTools.driver import Driver
from driving import WORKSHOP, done, opened, time_row
from likeness import by_mutool, by_pdftocairo, likenesses
from measure import Job, Sample, Tool, job_round, rounds
from photoDocuments import photo_documents, photographs
from table import Row

RIVAL = "Ghostscript `/ebook`"
MOST_ROUNDS = 3  # Ghostscript takes a minute for one
LOOKED_AT = 12   # pages of a document, at most
LINES_ON_COMPRESSION = [
    f"Compression, as the export of pages, has {MOST_ROUNDS} rounds. Its ten documents of A4 pages are made from",
    "the pictures of Debian's mate-backgrounds. Ghostscript copies what has less than 225 dpi: at a column's",
    "width the pictures have more. Likeness is the structural similarity of pages drawn at 1,300 pixels to",
    "those of the original."]
MOST_LOST = {"medium": 0.03, "small": 0.05}
FASTER, SMALLER, MOST_OF_A_SEARCH, FROM_TWO_CORES = 6, 2, 2.5, 1.7


def compressing(driver, runs):
    """The rows of all ten documents, those of their medians last."""
    runs = min(runs, MOST_ROUNDS)
    rows, times, sizes, searches, cores = [], [], [], [], []
    for document in photo_documents(WORKSHOP):
        against, copy = _against_ghostscript(driver, document, runs)
        times.append(against[0])
        sizes.append(against[1])
        searches.append(_searching(driver, document, os.path.getsize(copy), runs))
        rows += [*against, searches[-1]]
        if document.is_jpeg and len(os.sched_getaffinity(0)) > 1:
            cores.append(_two_cores(driver, document, runs))
    rows += [_middle("Small of the ten: median of the ratios", times, 1 / FASTER),
             _middle("Small of the ten: size, median of the ratios", sizes, 1 / SMALLER),
             _middle("Search to the size of small, median of the ratios", searches, MOST_OF_A_SEARCH)]
    if cores:
        rows.append(_middle("Small of those of JPEG: median of the ratios", cores, 1 / FROM_TWO_CORES))
    return rows + _looking(driver)


def _against_ghostscript(driver, document, runs):
    ours, theirs = str(WORKSHOP / "small.pdf"), str(WORKSHOP / "ebook.pdf")
    tool = Tool(["gs", "-q", "-dNOPAUSE", "-dBATCH", "-sDEVICE=pdfwrite", "-dPDFSETTINGS=/ebook",
                 f"-sOutputFile={theirs}", document.path], theirs)
    sample, rivals = rounds(driver, _small(document, ours), {RIVAL: tool}, runs)
    work, rival = f"Small of {document.name}", rivals[RIVAL]
    pages = range(1, document.pages + 1, -(-document.pages // LOOKED_AT))
    likes = [mean(likenesses(document.path, copy, pages)) for copy in (ours, theirs)]
    return [time_row(work, sample, RIVAL, rival),
            Row(f"{work}: size", sample.bytes, "B", RIVAL, rival.bytes),
            Row(f"{work}: likeness", likes[0], "SSIM", RIVAL, likes[1])], ours


def _searching(driver, document, limit, runs):
    """For a limit that takes the longest search: the size of `small` itself, with five builds."""
    small, search = Sample(), Sample()
    found = str(WORKSHOP / "found.pdf")

    def steps(ask):
        opened(ask, document.path)
        return done(ask("compress", file=0, limit=limit, to=found))

    for round_number in range(runs + 1):
        job_round(driver, _small(document, found), small, round_number > 0)
        job_round(driver, Job(steps, found), search, round_number > 0)
    work = f"Search to the size of small, {document.name}"
    return time_row(work, search, "small alone", small)


def _two_cores(driver, document, runs):
    one, two = Sample(), Sample()
    job = _small(document, str(WORKSHOP / "small.pdf"))
    for round_number in range(runs + 1):
        job_round(driver, job, two, round_number > 0)
        with _one_core():
            job_round(driver, job, one, round_number > 0)
    return time_row("", two, "one core", one)


def _looking(driver):
    """How much of its likeness the photograph loses that fares worst."""
    document, copy = photographs(WORKSHOP), str(WORKSHOP / "looked-at.pdf")
    rows = []
    for choice, limit in MOST_LOST.items():
        with Driver(driver) as session:
            opened(session.ask, document.path)
            done(session.ask("compress", file=0, choice=choice, to=copy))
        for name, draw in (("mutool", by_mutool), ("pdftocairo", by_pdftocairo)):
            worst = min(likenesses(document.path, copy, range(1, document.pages + 1), draw))
            work = f"Likeness lost by the worst of {document.pages} photographs at {choice}, drawn by {name}"
            rows.append(Row(work, 1 - worst, "SSIM", limit=limit))
    return rows


def _small(document, output):
    def steps(ask):
        opened(ask, document.path)
        return done(ask("compress", file=0, choice="small", to=output))

    return Job(steps, output)


@contextmanager
def _one_core():
    """For the processes that are started meanwhile."""
    cores = os.sched_getaffinity(0)
    os.sched_setaffinity(0, {min(cores)})
    try:
        yield
    finally:
        os.sched_setaffinity(0, cores)


def _middle(work, rows, limit):
    """Of rows of one unit and rival; the numbers are those of the row in the middle."""
    ratio = median(row.value for row in rows)
    nearest = min(rows, key=lambda row: abs(row.value - ratio))
    return Row(work, nearest.ours, nearest.unit, nearest.rival, nearest.theirs, limit, ratio=ratio)
