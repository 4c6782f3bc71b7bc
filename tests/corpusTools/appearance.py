"""Whether two PDFs look alike: their pages are drawn small and compared tile by tile by mean colour. Neither
the noise of JPEG nor another renderer's edges change that much; a lost, moved or discoloured picture does."""

import re
import tempfile
from dataclasses import dataclass
from functools import cached_property
from pathlib import Path

from corpusTools.outsideTools import run

LONG_SIDE = 360  # pixels that a page is drawn with
LARGE = 2000  # the same for a closer look
COLUMNS, ROWS = 8, 8
BLANK = 8  # most that the values of a blank page spread
SHOWING = 48  # least that those of a page with something on it do
PPM = re.compile(rb"P6\s+(\d+)\s+(\d+)\s+255\s")


@dataclass(frozen=True)
class Picture:
    width: int
    height: int
    samples: bytes  # RGB

    @property
    def spread(self):
        """The largest difference between two values of a channel."""
        return max(max(self.samples[at::3]) - min(self.samples[at::3]) for at in range(3))

    @cached_property
    def tiles(self):
        """The mean colour of each tile."""
        found = []
        for top, bottom in _cuts(self.height, ROWS):
            rows = [self.samples[y * self.width * 3:(y + 1) * self.width * 3] for y in range(top, bottom)]
            for left, right in _cuts(self.width, COLUMNS):
                tile = b"".join(row[left * 3:right * 3] for row in rows)
                found.append(tuple(sum(tile[at::3]) * 3 / len(tile) for at in range(3)))
        return found


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


def large_difference(before, after, page, renderers):
    """The difference of one page of two files, 1-based, drawn large: then the width of thin lines and the
    edges of stencils, on which renderers differ, weigh little. The least by the renderers of `before`."""
    drawn = by_mupdf(after, LARGE, page)
    sources = [by(before, LARGE, page) for by in renderers]
    return min((difference(source[0], drawn[0]) for source in sources if source and drawn), default=255)


def difference(one, other):
    """The largest difference of a tile's mean in a channel, 0 to 255; of other shapes, all."""
    rounding = max(3, max(one.width, one.height) // 100)
    if abs(one.width - other.width) > rounding or abs(one.height - other.height) > rounding:
        return 255
    pairs = zip(one.tiles, other.tiles)
    return max(abs(a - b) for mine, yours in pairs for a, b in zip(mine, yours))


def became_blank(before, after):
    return before.spread >= SHOWING and after.spread <= BLANK


def _read(folder):
    files = sorted(Path(folder).iterdir(), key=lambda page: int(re.findall(r"\d+", page.stem)[-1]))
    return [_picture(page.read_bytes()) for page in files]


def _picture(data):
    head = PPM.match(data)
    return Picture(int(head[1]), int(head[2]), data[head.end():])


def _cuts(length, parts):
    """Where each part begins and ends; at least a pixel wide."""
    edges = [at * length // parts for at in range(parts + 1)]
    return [(min(a, length - 1), max(b, min(a, length - 1) + 1)) for a, b in zip(edges, edges[1:])]
