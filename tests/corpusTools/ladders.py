"""What compression promises: the rungs, the limits on offer, and which rung answers a limit."""

from dataclasses import dataclass
from itertools import pairwise

LIMITS = (200_000, 300_000, 500_000, 750_000, 1_000_000, 1_500_000, 2_000_000, 3_000_000, 4_000_000,
          5_000_000, 7_500_000, 10_000_000, 15_000_000, 20_000_000)  # bytes
TEXT_STEPS = (None, (2000, 0.7), (1800, 0.62), (1600, 0.55), (1300, 0.55), (1300, 0.45), (1150, 0.4),
              (1000, 0.35))  # longest side in pixels, JPEG quality
PICTURE_STEPS = ((2000, 0.6), (1600, 0.5), (1300, 0.45), (1150, 0.4), (1000, 0.35), (900, 0.3), (800, 0.25),
                 (700, 0.2))
CHOICES = {"original": 0, "medium": 1, "small": 4}  # by rung of the text ladder


@dataclass(frozen=True)
class Rung:
    pictures: bool
    index: int

    def __str__(self):
        return f"{'picture' if self.pictures else 'text'} rung {self.index}"

    def request(self):
        """The fields that ask the driver for this rung alone."""
        step = (PICTURE_STEPS if self.pictures else TEXT_STEPS)[self.index]
        if step is None:
            return {"choice": "original"}
        return {"maxPixels": step[0], "jpegQuality": step[1], "pagesAsPictures": self.pictures}


TEXT_RUNGS = [Rung(False, index) for index in range(len(TEXT_STEPS))]
PICTURE_RUNGS = [Rung(True, index) for index in range(len(PICTURE_STEPS))]
RUNGS = TEXT_RUNGS + PICTURE_RUNGS


def falls(sizes):
    """Whether no rung is larger than the one before it."""
    return all(one >= next_one for one, next_one in pairwise(sizes))


def answers(limit, sizes):
    """The rungs that may answer a limit, by the size of each rung: text where it fits, then pictures, and the
    first that fits; any that fits where the sizes do not fall. When nothing fits, the smaller of the two last
    ones; of equal ones text. A ladder of which neither end fits is taken to have nothing that does."""
    for ladder in (TEXT_RUNGS, PICTURE_RUNGS):
        if sizes[ladder[0]] <= limit:
            return [ladder[0]]
        if sizes[ladder[-1]] <= limit:
            fitting = [rung for rung in ladder if sizes[rung] <= limit]
            return fitting[:1] if falls([sizes[rung] for rung in ladder[1:]]) else fitting
    return [min((TEXT_RUNGS[-1], PICTURE_RUNGS[-1]), key=lambda rung: sizes[rung])]


def overlooked(limit, sizes):
    """Whether a better rung than the answer fits, which a search over falling sizes cannot see."""
    best = next((rung for rung in RUNGS if sizes[rung] <= limit), None)
    return best is not None and best not in answers(limit, sizes)


def limits_to_try(sizes, quick):
    """The limits on offer, and those at the very sizes of rungs and one byte below."""
    edges = [TEXT_RUNGS[3], PICTURE_RUNGS[4]] if quick else RUNGS
    last = (TEXT_RUNGS[-1], PICTURE_RUNGS[-1])
    tried = {sizes[rung] for rung in edges} | {sizes[rung] - 1 for rung in (*edges, *last)}
    return sorted(tried | set(_telling(sizes) if quick else LIMITS))


def _telling(sizes):
    """The limit on offer below the original, and the least one."""
    return [max((limit for limit in LIMITS if limit < sizes[TEXT_RUNGS[0]]), default=LIMITS[0]), LIMITS[0]]
