"""Whether two PDFs look alike: their pages are drawn small and compared tile by tile by mean colour. Neither
the noise of JPEG nor another renderer's edges change that much; a lost, moved or discoloured picture does."""

import re
import subprocess
import tempfile
from dataclasses import dataclass
from pathlib import Path

from corpusTools.outsideTools import run

LONG_SIDE = 360  # pixels that a page is drawn with
LARGE = 2000  # the same for a closer look
TILES = "8x8!"  # whatever the shape of the page
BLANK = 8  # most that the values of a blank page spread
SHOWING = 48  # least that those of a page with something on it do


@dataclass(frozen=True)
class Picture:
    width: int
    height: int
    spread: int  # between the lightest and the darkest value
    tiles: bytes  # the mean colour of each


def by_mupdf(path, long_side=LONG_SIDE, pages="1-N"):
    """The pages in order; fewer of them when some could not be drawn."""
    with tempfile.TemporaryDirectory() as folder:
        size = ("-w", long_side, "-h", long_side)
        run("mutool", "draw", "-q", "-c", "rgb", *size, "-o", f"{folder}/page%d.ppm", path, pages)
        return _read(folder)


def by_poppler(path, long_side=LONG_SIDE, page=1):
    with tempfile.TemporaryDirectory() as folder:
        only = ("-f", page, "-l", page)
        run("pdftoppm", "-cropbox", "-scale-to", long_side, *only, path, f"{folder}/page")
        return _read(folder)


def large_difference(before, after, page, as_pictures):
    """The difference of one page of two files, 1-based, drawn large: then the width of thin lines and the edges of
    stencils, on which renderers differ, weigh little. Pictures of pages are Poppler's, which may see another page."""
    sources = [by_mupdf(before, LARGE, page)] + ([by_poppler(before, LARGE, page)] if as_pictures else [])
    drawn = by_mupdf(after, LARGE, page)
    return min((difference(source[0], drawn[0]) for source in sources if source and drawn), default=255)


def difference(one, other):
    """The largest difference of a tile's mean in a channel, 0 to 255; of other shapes, all."""
    rounding = max(3, max(one.width, one.height) // 100)
    if abs(one.width - other.width) > rounding or abs(one.height - other.height) > rounding:
        return 255
    return max(abs(mine - yours) for mine, yours in zip(one.tiles, other.tiles))


def became_blank(before, after):
    return before.spread >= SHOWING and after.spread <= BLANK


def _read(folder):
    files = sorted(Path(folder).iterdir(), key=lambda page: int(re.findall(r"\d+", page.stem)[-1]))
    return [_picture(page) for page in files]


def _picture(page):
    said = subprocess.run(["convert-im6.q16", page, "-format", "%w %h %[fx:255*(maxima-minima)]\n", "-write", "info:",
                           "-scale", TILES, "-depth", "8", "rgb:-"], capture_output=True, check=True).stdout
    head, tiles = said.split(b"\n", 1)
    return Picture(*map(round, map(float, head.split())), tiles)
