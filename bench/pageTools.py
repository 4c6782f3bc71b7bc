"""Merging and the export of pages, against tools that do no more than that."""

import shutil

import inputs
from driving import WORKSHOP, done, opened, time_row
from measure import Job, Tool, rounds

MERGED_FILES, MERGED_PAGES = 100, 10
DPI = 200
MOST_ROUNDS = 3  # the rival takes half a second for a page


def merging(driver, runs):
    """A hundred files with bookmarks, links, names and forms, which the rival leaves behind."""
    ours, theirs = str(WORKSHOP / "merged.pdf"), str(WORKSHOP / "merged-qpdf.pdf")
    files = _files_to_merge()
    rival = "`qpdf --empty --pages`"
    tool = Tool(["qpdf", "--empty", "--pages", *files, "--", theirs], theirs)

    def steps(ask):
        return done(ask("mergeAdd", files=files)) + done(ask("merge", to=ours))

    sample, rivals = rounds(driver, Job(steps, ours), {rival: tool}, runs)
    work = f"Merge {MERGED_FILES} files of {MERGED_PAGES} pages"
    return [time_row(work, sample, rival, rivals[rival], 1.3)]


def exporting(driver, path, pages, runs):
    """The first pages of the document as PNG files."""
    ours, theirs = WORKSHOP / "exported", WORKSHOP / "exported-rival"
    rival = "`pdftoppm -png`"
    tool = Tool(["pdftoppm", "-png", "-r", str(DPI), "-l", str(pages), path, str(theirs / "page")])

    def steps(ask):
        for folder in (ours, theirs):
            shutil.rmtree(folder, ignore_errors=True)
            folder.mkdir()
        opened(ask, path)
        chosen = list(range(1, pages + 1))
        return done(ask("exportImages", file=0, pages=chosen, jpeg=False, dpi=DPI, folder=str(ours)))

    sample, rivals = rounds(driver, Job(steps), {rival: tool}, min(runs, MOST_ROUNDS))
    made = [len(list(folder.rglob("*.png"))) for folder in (ours, theirs)]
    assert made == [pages, pages], made
    return [time_row(f"Export {pages} pages at {DPI} dpi to PNG", sample, rival, rivals[rival], 1.1)]


def _files_to_merge():
    folder = WORKSHOP / "to-merge"
    folder.mkdir(parents=True, exist_ok=True)
    paths = [folder / f"file-{number:03}.pdf" for number in range(MERGED_FILES)]
    for path in paths:
        inputs.make_book(path, MERGED_PAGES)
    return [str(path) for path in paths]
