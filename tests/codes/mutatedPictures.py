#!/usr/bin/env -S python3 -B
"""Has damaged pictures read as the program reads them: decoded, then looked through for codes. They are made from pictures of
codes in all formats that can be made here and from the samples of the tests of pictures. The reader must live, answer each picture
within its limit, with codes or none, and still find the code in a good picture after them.

    tests/codes/mutatedPictures.py [FOLDER] [--pictures N] [--seed N] [--reader PATH] [--slow] [--keep FOLDER]

FOLDER (or FOLVANE_CORPUS) may hold more pictures to start from. --slow: for builds that take ten times as long. --keep: where
pictures go that did harm. Ends with 1 when there was one.
"""

import argparse
import json
import os
import random
import select
import subprocess
import sys
import tempfile
from collections import Counter
from pathlib import Path

from PIL import Image

sys.path.insert(0, str(Path(__file__).resolve().parents[1]))
from corpusTools.mutations import IN_PICTURE, PNG_START, mutate, with_true_checksums  # noqa: E402

SAMPLES = Path(__file__).resolve().parents[1] / "pictures/samples"
RASTERS = ("png", "jpg", "gif", "tiff", "bmp", "webp", "ico", "ppm")
CODES = (("QRCODE", "https://example.org/a"), ("AZTEC", "Aztec Code"), ("CODE128", "ABC-12345"), ("DBAR_OMN", "0950110153001"))
TAKEN_FROM_CORPUS = 40
GOOD_EVERY = 50
DECODING_SECONDS = 30
READING_SECONDS = (3, 10)  # of CodeReader, and above 8 megapixels
LARGE = 8_000_000
ANSWERING = 1  # seconds more, to end the process that took too long
SLOW = 10


class Reader:
    """The tool, started anew after it ended."""

    def __init__(self, path, folder):
        self._path = path
        self._process = None
        self._reports = folder / "report"
        log = f"log_path={self._reports}"
        self._environment = {**os.environ, "ASAN_OPTIONS": log, "UBSAN_OPTIONS": f"{log}:print_stacktrace=1"}

    def reports(self):
        """What sanitizers wrote of all its processes, which answer with no codes after a fault."""
        return [path.read_text() for path in sorted(self._reports.parent.glob(f"{self._reports.name}.*"))]

    def ask(self, picture, seconds):
        """Its answer; a text on what went wrong instead."""
        if not self._process or self._process.poll() is not None:
            self._process = subprocess.Popen([self._path], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                             stderr=subprocess.DEVNULL, env=self._environment)
        self._process.stdin.write(f"{picture}\n".encode())
        self._process.stdin.flush()
        if not select.select([self._process.stdout], [], [], seconds)[0]:
            self.end()
            return "no answer"
        line = self._process.stdout.readline()
        return json.loads(line) if line else f"ended with {self._process.wait()}"

    def end(self):
        if self._process:
            self._process.kill()
            self._process.communicate()


def main():
    options = parsed_options()
    chance = random.Random(options.seed)
    with tempfile.TemporaryDirectory(prefix="folvane-mutated-") as name:
        folder = Path(name)
        sources = made_pictures(folder) + corpus_pictures(options.folder, chance)
        reader, tally, harm = Reader(options.reader, folder), Counter(), []
        for number in range(options.pictures):
            path = damaged(chance.choice(sources), chance, folder)
            harm += [(path.suffix, fault) for fault in faults_of(reader, path, tally, options, folder, number)]
            path.unlink()
        reader.end()
        harm += [("sanitizer", report) for report in reader.reports()]
    print(f"{options.pictures} pictures of {len({source.suffix for source in sources})} formats: {tally['decoded']} still decode, "
          f"{tally['read']} still give codes, the longest search took {tally['longest']} ms; {len(harm)} did harm.")
    for suffix, fault in harm:
        print(suffix, fault)
    return 1 if harm else 0


def parsed_options():
    parser = argparse.ArgumentParser(description="Has damaged pictures read.")
    parser.add_argument("folder", type=Path, nargs="?", default=os.environ.get("FOLVANE_CORPUS"))
    parser.add_argument("--pictures", type=int, default=2000)
    parser.add_argument("--seed", type=int, default=1)
    root = Path(__file__).resolve().parents[2]
    parser.add_argument("--reader", type=Path, default=root / "build/release/bin/folvane-codes-in")
    parser.add_argument("--slow", action="store_true")
    parser.add_argument("--keep", type=Path)
    return parser.parse_args()


def made_pictures(folder):
    """Codes in each format; the first is the good picture."""
    made = []
    for kind, text in CODES:
        png = folder / f"{kind}.png"
        subprocess.run(["zint", "-b", kind, "-d", text, "--scale=2", "-o", png], check=True)
        subprocess.run(["zint", "-b", kind, "-d", text, "-o", png.with_suffix(".svg")], check=True)
        picture = Image.open(png).convert("RGB")
        for suffix in RASTERS[1:]:
            picture.save(png.with_suffix(f".{suffix}"))
        made += [png.with_suffix(f".{suffix}") for suffix in (*RASTERS, "svg")]
    return made + sorted(path for path in SAMPLES.iterdir() if path.suffix in (".heic", ".tif", ".jpg", ".gif", ".svg", ".webp"))


def corpus_pictures(folder, chance):
    if not folder:
        return []
    found = sorted(path for path in Path(folder).rglob("*") if path.suffix in (".png", ".jpg", ".webp"))
    return chance.sample(found, min(len(found), TAKEN_FROM_CORPUS))


def damaged(source, chance, folder):
    data = mutate(chance, source.read_bytes(), IN_PICTURE)
    if data.startswith(PNG_START) and chance.random() < 0.7:
        data = with_true_checksums(data)
    path = folder / f"damaged{source.suffix}"
    path.write_bytes(data)
    return path


def faults_of(reader, path, tally, options, folder, number):
    factor = SLOW if options.slow else 1
    answer = reader.ask(path, factor * (DECODING_SECONDS + READING_SECONDS[1]))
    fault = answer if isinstance(answer, str) else fault_in(answer, factor)
    if not isinstance(answer, str):
        tally["decoded"] += answer["pixels"] > 0
        tally["read"] += bool(answer["codes"])
        tally["longest"] = max(tally["longest"], round(answer["ms"]))
    if fault:
        if options.keep:
            (options.keep / f"{number}{path.suffix}").write_bytes(path.read_bytes())
        yield fault
    if number % GOOD_EVERY == GOOD_EVERY - 1:
        good = reader.ask(folder / "QRCODE.png", factor * DECODING_SECONDS)
        if isinstance(good, str) or good["codes"] != [["qr", CODES[0][1]]]:
            yield f"after it a good picture gives {good}"


def fault_in(answer, factor):
    limit = factor * (READING_SECONDS[answer["pixels"] > LARGE] + ANSWERING)
    if answer["ms"] > 1000 * limit:
        return f"took {answer['ms']:.0f} ms for {answer['pixels']} pixels"
    return next((f"gives {code}" for code in answer["codes"] if len(code) != 2 or not code[1]), "")


if __name__ == "__main__":
    sys.exit(main())
