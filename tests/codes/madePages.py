#!/usr/bin/env -S python3 -B
"""Makes pages of A4 at 2,400 pixels with 1 to 24 codes of all kinds, 10 to 50 mm wide, turned by multiples of 5 degrees, over
text and coarse pictures, with the noise of print, and as many without codes as wanted; has our reader read them, and tells
how many it finds.

    tests/codes/madePages.py [--pages N] [--empty N] [--seed N] [--reader PATH] [--write FILE]

The codes are drawn by zint. Ends with 1 when less than 96 of 100 are found, or a wrong one is read.
"""

import argparse
import random
import subprocess
import sys
import tempfile
from collections import Counter
from datetime import date
from pathlib import Path

import numpy
from PIL import Image, ImageChops, ImageDraw, ImageFilter, ImageFont

sys.path.insert(0, str(Path(__file__).resolve().parents[1]))
from corpus import read_by_us  # noqa: E402
from corpusTools.reports import table, tell  # noqa: E402

WIDTH, HEIGHT = 1697, 2400
PIXELS_PER_MM = HEIGHT / 297
FONT = "/usr/share/fonts/opentype/inter/Inter-Regular.otf"
LETTERS = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789"
WORDS = "the code on this page stands for an address and a number which a person reads 2026 INV-4711 |||| IIII 1111".split()


def digits(rng, count):
    return "".join(rng.choices("0123456789", k=count))


def with_check(text):
    return text + str(-sum(int(digit) * (3 if place % 2 == 0 else 1) for place, digit in enumerate(reversed(text))) % 10)


def words(rng, count):
    return "".join(rng.choices(LETTERS, k=count))


def pick(kind, least, name, make, says=str):
    """Kind, least width in mm, zint's name, what makes a text, what a reader says of it."""
    return kind, least, name, make, says


KINDS = [
    pick("qr", 12, "QRCODE", lambda rng: f"https://example.org/{words(rng, rng.randint(4, 40))}"),
    pick("microQR", 10, "MICROQR", lambda rng: words(rng, 8)),
    pick("aztec", 12, "AZTEC", lambda rng: words(rng, rng.randint(6, 40))),
    pick("dataMatrix", 12, "DATAMATRIX", lambda rng: words(rng, rng.randint(6, 30))),
    pick("pdf417", 35, "PDF417", lambda rng: words(rng, rng.randint(8, 30))),
    pick("ean13", 30, "EANX", lambda rng: "4" + digits(rng, 11), with_check),
    pick("ean8", 24, "EANX", lambda rng: digits(rng, 7), with_check),
    pick("code39", 42, "CODE39", lambda rng: words(rng, 6)),
    pick("code93", 38, "CODE93", lambda rng: words(rng, 8)),
    pick("code128", 36, "CODE128", lambda rng: words(rng, 8)),
    pick("itf14", 40, "ITF14", lambda rng: digits(rng, 13), with_check),
    pick("i2of5", 32, "C25INTER", lambda rng: digits(rng, 8)),
    pick("codabar", 38, "CODABAR", lambda rng: f"A{digits(rng, 8)}B", lambda text: text[1:-1]),
    pick("gs1DataBar", 32, "DBAR_OMN", lambda rng: digits(rng, 13), lambda text: "01" + with_check(text)),
]


def drawn(kind, text, folder):
    path = Path(folder) / "code.png"
    subprocess.run(["zint", "-b", kind, "-d", text, "--scale=4", "--notext", "--quietzones", "-o", path], check=True,
                   capture_output=True)
    return Image.open(path).convert("L").copy()


def grain(rng, size, deviation):
    values = numpy.random.default_rng(rng.getrandbits(32)).normal(128, deviation, size[::-1])
    return Image.fromarray(values.clip(0, 255).astype(numpy.uint8))


def coarse_picture(rng, width, height):
    """Greys that change as in a photograph, with edges."""
    grey = grain(rng, (max(2, width // rng.randint(8, 40)), max(2, height // rng.randint(8, 40))), 90)
    return grey.resize((width, height), rng.choice([Image.BICUBIC, Image.NEAREST]))


def ground(rng):
    page = Image.new("L", (WIDTH, HEIGHT), rng.randint(225, 255))
    draw = ImageDraw.Draw(page)
    font = ImageFont.truetype(FONT, rng.randint(16, 34))
    for y in range(60, HEIGHT - 60, int(font.size * 1.5)):
        draw.text((rng.randint(60, 200), y), " ".join(rng.choices(WORDS, k=rng.randint(0, 24))), rng.randint(0, 90), font)
    for _ in range(rng.randint(0, 4)):
        picture = coarse_picture(rng, rng.randint(150, 800), rng.randint(150, 800))
        page.paste(picture, (rng.randrange(WIDTH), rng.randrange(HEIGHT)))
    return page


def printed(page, rng):
    """As a scanner sees it: soft, with grain."""
    soft = page.filter(ImageFilter.GaussianBlur(rng.uniform(0, 0.9)))
    return ImageChops.add(soft, grain(rng, page.size, rng.uniform(4, 18)), 1, -128)


def place(page, code, taken, rng):
    """Somewhere free; False when there is no room."""
    angle = 5 * rng.randint(1, 18)
    turned = code.rotate(angle, Image.BICUBIC, expand=True, fillcolor=255)
    mask = Image.new("L", code.size, 255).rotate(angle, expand=True)
    for _ in range(80):
        if turned.width >= WIDTH or turned.height >= HEIGHT:
            return False
        x, y = rng.randrange(WIDTH - turned.width), rng.randrange(HEIGHT - turned.height)
        box = x, y, x + turned.width, y + turned.height
        if not any(box[0] < other[2] and other[0] < box[2] and box[1] < other[3] and other[1] < box[3] for other in taken):
            page.paste(turned, (x, y), mask)
            taken.append(box)
            return True
    return False


def made_page(count, rng, folder):
    """A page and the codes on it as (kind, text)."""
    page, taken, codes = ground(rng), [], []
    for _ in range(count):
        kind, least, name, make, says = rng.choice(KINDS)
        text = make(rng)
        code = drawn(name, text, folder)
        width = round(max(rng.uniform(10, 50), least) * PIXELS_PER_MM)
        code = code.resize((width, round(code.height * width / code.width)), Image.LANCZOS)
        if place(page, code, taken, rng):
            codes.append((kind, says(text)))
    return printed(page, rng), codes


def main():
    parser = argparse.ArgumentParser(description="Has made pages read.")
    parser.add_argument("--pages", type=int, default=60)
    parser.add_argument("--empty", type=int, default=40)
    parser.add_argument("--seed", type=int, default=1)
    root = Path(__file__).resolve().parents[2]
    parser.add_argument("--reader", type=Path, default=root / "build/release/bin/folvane-codes-in")
    parser.add_argument("--write", type=Path, help="a Markdown file for the result")
    options = parser.parse_args()
    rng = random.Random(options.seed)
    with tempfile.TemporaryDirectory(prefix="folvane-pages-") as folder:
        paths, wanted = [], []
        for number in range(options.pages + options.empty):
            page, codes = made_page(rng.randint(1, 24) if number < options.pages else 0, rng, folder)
            paths.append(Path(folder) / f"{number}.png")
            page.save(paths[-1], compress_level=1)
            wanted.append(codes)
        answers = read_by_us(paths, options.reader)
    return report(wanted, answers, options)


def report(wanted, answers, options):
    there, found, wrong = Counter(), Counter(), Counter()
    for codes, answer in zip(wanted, answers, strict=True):
        read = {tuple(code) for code in answer["codes"]}
        there.update(kind for kind, _ in codes)
        found.update(kind for kind, text in codes if (kind, text) in read)
        for kind, text in read - set(codes):
            wrong[kind] += 1
            print("Wrong:", kind, text)
    milliseconds = sum(answer["ms"] for answer in answers) / len(answers)
    rows = [(kind, there[kind], found[kind], wrong[kind]) for kind, *_ in KINDS]
    total = ("all", there.total(), found.total(), wrong.total())
    words = (f"Last result of `tests/codes/madePages.py`, {date.today():%d %B %Y}: {options.pages} pages with codes and "
             f"{options.empty} without, {milliseconds:.0f} ms a page on average.")
    tell(table("Kind | Codes | Found | Wrong reads", [*rows, total]), words, "Made pages", options.write)
    return 1 if found.total() < 0.96 * there.total() or wrong else 0


if __name__ == "__main__":
    sys.exit(main())
