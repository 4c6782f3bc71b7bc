"""Pieces of work for the driver, and the rows of the table that tell how they went."""

import subprocess
import sys
from pathlib import Path

from table import Row

WORKSHOP = Path(__file__).resolve().parents[1] / "build/bench"
MEMORY_FACTOR = 1.5


def opened(ask, path):
    """Opens the file and returns the milliseconds that it took."""
    return done(ask("open", files=[path]))


def done(answer):
    """The milliseconds of work that came to its end; anything else ends the benchmark."""
    if answer.get("outcome") != "done" or answer.get("error"):
        sys.exit(f"The driver could not do its part: {answer}")
    return answer["ms"]


def page_count(path):
    said = subprocess.run(["qpdf", "--show-npages", path], capture_output=True, text=True).stdout.strip()
    return int(said) if said.isdigit() else 0


def time_row(work, sample, rival, theirs, limit=None, strict=False):
    return Row(work, sample.ms, "ms", rival, theirs.ms, limit, strict, sample.ratio_to(theirs))


def memory_row(work, sample, rival, theirs):
    """What the driver grew by over idle, less the bytes that it wrote, against the tool's whole peak."""
    grown = max(0, sample.peak - sample.bytes)
    return Row(f"{work}: memory", grown, "MiB", rival, theirs.peak, MEMORY_FACTOR)
