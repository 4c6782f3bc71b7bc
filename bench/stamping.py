"""Photos that become stamps, against OpenCV and ImageMagick, one stamp on all pages, against the plain copy, and dragging one."""

import subprocess
from pathlib import Path

import inputs
from driving import WORKSHOP, done, opened, time_row
from frames import frames
from measure import Job, Sample, Tool, job_round, rounds
from photoDocuments import photographs
from stamps.stampReference import photo
from table import Row

CAMERA, HALF = (4000, 3000), (2000, 1500)
RADIUS = max(HALF) / 120  # pixels, of the disc in which the brightest is paper
ALLOWED_MS = 100          # for all but the paper: the ink, the PNG, the library on the disk
SLOWER, FASTER = 1.2, 8
MOST_ROUNDS = 3           # ImageMagick takes ten seconds
PAGES = 1000
BYTES_A_PAGE, TIMES_THE_PLAIN_COPY = 600, 3


def stamping(driver, runs):
    return _making(driver, _photo(), runs) + _placing(driver, runs) + _dragging(driver)


def _making(driver, picture, runs):
    """Against tools that stop at the paper (the first), or at the ink (the second)."""
    half = str(WORKSHOP / "half.ppm")
    decoder, paper, magick = "djpeg", "OpenCV", "ImageMagick, the same steps"
    tools = {decoder: Tool(["djpeg", "-scale", "1/2", "-outfile", half, picture]),
             paper: Tool([str(Path(driver).with_name("folvane-paper-bench")), half])}

    def steps(ask):
        return done(ask("makeStamp", **{"from": picture}))

    sample, theirs = rounds(driver, Job(steps), tools, runs)
    sum_of_both = Sample([a + b + ALLOWED_MS for a, b in zip(theirs[decoder].times, theirs[paper].times)])
    few, rivals = rounds(driver, Job(steps), {magick: _magick(picture)}, min(runs, MOST_ROUNDS))
    work = "A stamp from a photo of 12 megapixels"
    return [time_row(work, sample, f"`djpeg`, OpenCV's dilation and blur, and {ALLOWED_MS} ms", sum_of_both, SLOWER),
            time_row(work, few, magick, rivals[magick], 1 / FASTER)]


def _magick(picture):
    width, height = HALF
    return Tool(["convert", "-define", f"jpeg:size={width}x{height}", picture, "-resize", f"{width}x{height}",
                 "(", "+clone", "-morphology", "Dilate", f"Disk:{RADIUS:.2f}", "-blur", f"0x{2 * RADIUS:.2f}", ")",
                 "-compose", "Divide_Src", "-composite", "null:"])


def _placing(driver, runs):
    """The whole first copy, with the stamp's picture read and made ready for print."""
    document = WORKSHOP / "thousand.pdf"
    inputs.make_plain(document, PAGES)
    plain, everywhere, once = Sample(), Sample(), Sample()
    for round_number in range(runs + 1):
        job_round(driver, _copy(document), plain, round_number > 0)
        job_round(driver, _copy(document, "place", "addToAll"), everywhere, round_number > 0)
    job_round(driver, _copy(document, "place"), once, True)
    work, size = f"Save {PAGES:,} pages with a stamp on each", once.bytes + BYTES_A_PAGE * PAGES
    return [time_row(work, everywhere, "the plain copy", plain, TIMES_THE_PLAIN_COPY),
            Row(f"{work}: size", everywhere.bytes, "B", f"a copy with one, and {BYTES_A_PAGE} B a page", size, 1)]


def _copy(document, *verbs):
    """What counts is the saving; the verbs go before it."""
    output = str(WORKSHOP / "stamped.pdf")

    def steps(ask):
        opened(ask, str(document))
        if "place" in verbs:
            stamp = _id(ask("makeStamp", **{"from": _photo()}), "record")
            placement = _id(ask("place", file=0, page=1, stamp=stamp), "placement")
        if "addToAll" in verbs:
            done(ask("addToAll", file=0, page=1, placement=placement))
        return done(ask("saveAs", file=0, to=output))

    return Job(steps, output)


def _dragging(driver):
    return frames(driver, "folvane-drag-bench", "Drag a stamp on a photo page, 1,000 frames",
                  photographs(WORKSHOP).path)


def _id(answer, made):
    done(answer)
    return answer[made]["id"]


def _photo():
    """Ink over unevenly lit paper, from a camera."""
    path = WORKSHOP / "signature.jpg"
    if not path.exists():
        WORKSHOP.mkdir(parents=True, exist_ok=True)
        width, height = HALF
        pixels = b"P6 %d %d 255\n" % HALF + photo(width, height, 1).tobytes()
        subprocess.run(["convert", "ppm:-", "-resize", "{}x{}".format(*CAMERA), "-quality", "92", str(path)],
                       input=pixels, check=True)
    return str(path)
