"""Drawing pages and finding the codes on them, against what there is no way around: drawing, and one look by each library."""

import json
import random
import subprocess
import sys
import time
from pathlib import Path

import inputs
from driving import WORKSHOP, time_row
from measure import Sample

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "tests/codes"))

from madePages import made_page  # noqa: E402

MADE_PAGES, TEXT_PAGES = 20, 100
QUICK_PAGES = 6
LONG_SIDE = 2400
SLOWER = 1.5
RIVAL = "drawing it, ZBar and zxing-cpp once each"


def reading_codes(driver, runs):
    """One page after the other: more pages rather than more rounds."""
    quick = runs <= 3
    made = _made_documents(QUICK_PAGES if quick else MADE_PAGES)
    text = _text_documents(QUICK_PAGES if quick else TEXT_PAGES)
    return [_row(driver, "Read the codes on a made page", made), _row(driver, "Look for codes on a text page", text)]


def _row(driver, work, pages):
    """`pages` are documents and page numbers."""
    ours, theirs = Sample(), Sample()
    with subprocess.Popen([Path(driver).with_name("folvane-codes-in")], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                          text=True) as reader:
        for number, (document, page) in enumerate([pages[0], *pages]):
            drawing, picture = _drawn(document, page)
            reader.stdin.write(f"{picture}\n")
            reader.stdin.flush()
            reading = json.loads(reader.stdout.readline())["ms"]
            looking = _milliseconds(lambda: _look(picture))
            if number > 0:  # the first warms up
                ours.times.append(drawing + reading)
                theirs.times.append(drawing + looking)
    return time_row(work, ours, RIVAL, theirs, SLOWER)


def _milliseconds(work):
    start = time.perf_counter()
    work()
    return 1000 * (time.perf_counter() - start)


def _drawn(document, page):
    """The time that it takes without writing a file, and the picture."""
    command = ["pdftoppm", "-gray", "-f", str(page), "-l", str(page), "-scale-to", str(LONG_SIDE), str(document)]
    drawing = _milliseconds(lambda: subprocess.run(command, check=True, stdout=subprocess.DEVNULL))
    subprocess.run([*command, "-singlefile", str(WORKSHOP / "page")], check=True)
    return drawing, WORKSHOP / "page.pgm"


def _look(picture):
    """At all kinds of codes but DataBar for zxing-cpp, which ends the process on some pictures then."""
    import zxingcpp
    from PIL import Image
    from pyzbar import pyzbar
    grey = Image.open(picture)
    pyzbar.decode(grey)
    zxingcpp.read_barcodes(grey, _formats(zxingcpp.BarcodeFormat), try_downscale=False)


def _formats(formats):
    names = ("QRCode", "MircoQRCode", "Aztec", "DataMatrix", "PDF417", "EAN13", "EAN8", "UPCE", "Code39", "Code93",
             "Code128", "ITF", "Codabar")
    chosen = formats.NONE
    for name in names:
        chosen |= getattr(formats, name)
    return chosen


def _made_documents(count):
    folder = WORKSHOP / "pages-with-codes"
    folder.mkdir(parents=True, exist_ok=True)
    rng = random.Random(1)
    documents = [folder / f"{number}.pdf" for number in range(count)]
    for document in documents:
        page, _ = made_page(rng.randint(1, 24), rng, folder)
        page.save(document, resolution=LONG_SIDE / 11.69)
    return [(document, 1) for document in documents]


def _text_documents(count):
    document = WORKSHOP / "book.pdf"
    if not document.exists():
        inputs.make_book(document)
    return [(document, page) for page in range(1, count + 1)]
