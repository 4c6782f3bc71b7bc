#!/usr/bin/env -S python3 -B
"""Reads pictures of codes with our reader, ZBar alone and zxing-cpp alone, and compares what they say.

    tests/codes/corpus.py [FOLDER] [--reader PATH] [--write FILE] [--first N]

FOLDER (or FOLVANE_CORPUS) holds a folder for each kind, named as in KINDS, and in it pictures, each with its text in a file
beside it. Pictures without a text are read, too, and what is found in them is counted. Ends with 1 when our reader is right in
fewer pictures of a folder than the better of the two libraries. Texts of UPC-E are compared as the numbers of thirteen digits that
they stand for: readers give the eight that are printed. --first N: the first N pictures of each folder.
"""

import argparse
import json
import os
import subprocess
import sys
from collections import Counter
from concurrent.futures import ThreadPoolExecutor
from dataclasses import dataclass, field
from datetime import date
from functools import partial
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1]))
from corpusTools.reports import table, tell  # noqa: E402

KINDS = {"aztec": "aztec", "codabar": "codabar", "code128": "code128", "code39": "code39", "code93": "code93",
         "datamatrix": "dataMatrix", "ean13": "ean13", "ean8": "ean8", "itf": "itf14 i2of5", "microqrcode": "microQR",
         "pdf417": "pdf417", "qrcode": "qr", "rss14": "gs1DataBar", "upce": "upce"}
ZBAR_KINDS = {"QRCODE": "qr", "EAN13": "ean13", "EAN8": "ean8", "UPCE": "upce", "CODE39": "code39", "CODE93": "code93",
              "CODE128": "code128", "I25": "i2of5", "CODABAR": "codabar", "DATABAR": "gs1DataBar",
              "DATABAR_EXP": "gs1DataBar"}
ZXING_KINDS = {"QRCode": "qr", "MircoQRCode": "microQR", "Aztec": "aztec", "DataMatrix": "dataMatrix", "PDF417": "pdf417",
               "EAN13": "ean13", "UPCA": "ean13", "EAN8": "ean8", "UPCE": "upce", "Code39": "code39", "Code93": "code93",
               "Code128": "code128", "ITF": "i2of5", "Codabar": "codabar", "DataBar": "gs1DataBar",
               "DataBarExpanded": "gs1DataBar"}
PICTURES = {".png", ".jpg", ".webp"}
READERS = ("ours", "ZBar", "zxing-cpp")
# Texts that a code bears, where the file beside it tells what another standard makes of them.
ALSO_RIGHT = {"code32-1.png": b"3PRM8N"}
SECONDS = 20


@dataclass
class Picture:
    path: Path
    text: bytes | None
    kinds: list
    reads: dict = field(default_factory=dict)  # reader: list of (kind, text)

    def says(self, kind, text):
        return plain(kind, text) in (plain(kind, self.text), ALSO_RIGHT.get(self.path.name))

    def judge(self, reader):
        """Right, missed, and how many wrong reads."""
        verdicts = [kind in self.kinds and self.says(kind, text) for kind, text in self.reads[reader]]
        return any(verdicts), verdicts.count(False)


def main():
    if sys.argv[1:2] == ["--alone"]:
        return print(json.dumps(LIBRARIES[sys.argv[2]](on_white(sys.argv[3]))))
    parser = argparse.ArgumentParser(description="Compares readers of codes.")
    parser.add_argument("folder", type=Path, nargs="?", default=os.environ.get("FOLVANE_CORPUS"))
    root = Path(__file__).resolve().parents[2]
    parser.add_argument("--reader", type=Path, default=root / "build/release/bin/folvane-codes-in")
    parser.add_argument("--write", type=Path, help="a Markdown file for the result")
    parser.add_argument("--first", type=int, help="so many pictures of each folder")
    options = parser.parse_args()
    if not options.folder or not Path(options.folder).is_dir():
        print("There is no corpus here.")
        return 77
    pictures = pictures_below(Path(options.folder), options.first)
    milliseconds = read_all(pictures, options.reader)
    known = [picture for picture in pictures if picture.text is not None]
    rows = list(rows_of(known))
    words = (f"Last result of `tests/codes/corpus.py` over {len(known)} pictures with one known text, {date.today():%d %B %Y}: "
             f"pictures that are right in text and kind, and reads that are wrong. Our reader took {milliseconds:.0f} ms a "
             "picture on average.")
    tell(table_of(rows), words, "Photographs and drawings", options.write)
    for line in notes_on(pictures):
        print(line)
    return 1 if any(behind(row) for row in rows) else 0


def pictures_below(folder, first):
    found = []
    for one in sorted(path for path in folder.iterdir() if path.is_dir()):
        paths = sorted(path for path in one.iterdir() if path.suffix in PICTURES)
        found += [Picture(path, text_beside(path), KINDS.get(one.name.split("-")[0], "").split()) for path in paths[:first]]
    return found


def text_beside(picture):
    path = picture.with_suffix(".txt")
    return path.read_bytes() if path.exists() else None


def read_all(pictures, reader):
    """Gives the mean time of ours in milliseconds."""
    with ThreadPoolExecutor(2) as pool:
        paths = [picture.path for picture in pictures]
        for library in LIBRARIES:
            for picture, reads in zip(pictures, pool.map(partial(alone, library), paths)):
                picture.reads[library] = reads
    answers = read_by_us(paths, reader)
    for picture, answer in zip(pictures, answers, strict=True):
        picture.reads["ours"] = [(kind, text.encode()) for kind, text in answer["codes"]]
    return sum(answer["ms"] for answer in answers) / max(1, len(answers))


def read_by_us(paths, reader):
    done = subprocess.run([reader], input="".join(f"{path}\n" for path in paths), capture_output=True, text=True, check=True)
    return [json.loads(line) for line in done.stdout.splitlines()]


def alone(library, path):
    """In a process of its own, since zxing-cpp gives up on some pictures."""
    try:
        done = subprocess.run([sys.executable, "-B", __file__, "--alone", library, path], capture_output=True, timeout=SECONDS)
        return [(kind, text.encode()) for kind, text in json.loads(done.stdout)]
    except (ValueError, subprocess.TimeoutExpired):
        return []


def zbar_here(picture):
    from pyzbar import pyzbar
    kinds = {pyzbar.ZBarSymbol[name]: kind for name, kind in ZBAR_KINDS.items()}
    found = pyzbar.decode(picture, list(kinds))
    return [(kinds[pyzbar.ZBarSymbol[code.type]], code.data.decode(errors="replace")) for code in found]


def zxing_here(picture):
    import zxingcpp
    return [(ZXING_KINDS.get(code.format.name, "other"), code.text) for code in zxingcpp.read_barcodes(picture)]


def on_white(path):
    from PIL import Image
    picture = Image.open(path).convert("RGBA")
    return Image.alpha_composite(Image.new("RGBA", picture.size, "white"), picture).convert("L")


def plain(kind, text):
    """What readers word differently, alike: Codabar without the letters that start and stop it, UPC-E as the number that it
    stands for."""
    if kind == "codabar" and text[:1].isalpha() and text[-1:].isalpha():
        return text[1:-1]
    return long_number(text.decode()) if kind == "upce" and len(text) == 8 else text


def long_number(short):
    """The thirteen digits of the eight of UPC-E."""
    system, body, check = short[0], short[1:7], short[7]
    rule, last = int(body[5]), body[5]
    middle = {3: body[:3] + "00000" + body[3:5], 4: body[:4] + "00000" + body[4]}.get(rule)
    if rule < 3:
        middle = body[:2] + last + "0000" + body[2:5]
    return f"0{system}{middle or body[:5] + '0000' + last}{check}".encode()


def rows_of(known):
    """Folder, number of pictures, and of each reader the right pictures and the wrong reads."""
    for name in sorted({picture.path.parent.name for picture in known}):
        own = [picture for picture in known if picture.path.parent.name == name]
        yield name, len(own), {reader: counts(own, reader) for reader in READERS}


def counts(pictures, reader):
    judged = [picture.judge(reader) for picture in pictures]
    return sum(right for right, _ in judged), sum(wrong for _, wrong in judged)


def behind(row):
    right = {reader: row[2][reader][0] for reader in READERS}
    return right["ours"] < max(right.values())


def table_of(rows):
    total = Counter()
    for _, _, by_reader in rows:
        for reader, (right, wrong) in by_reader.items():
            total.update({(reader, "right"): right, (reader, "wrong"): wrong})
    whole = ("all", sum(number for _, number, _ in rows),
             {reader: (total[reader, "right"], total[reader, "wrong"]) for reader in READERS})
    return table("Folder | Pictures | Ours | wrong | missed | ZBar | wrong | missed | zxing-cpp | wrong | missed",
                 [(name, number, *(cell for reader in READERS
                                   for cell in (*by_reader[reader], number - by_reader[reader][0])))
                  for name, number, by_reader in [*rows, whole]])


def notes_on(pictures):
    """What is not right, and what was found in pictures whose texts are not known."""
    for picture in pictures:
        name, reads = f"{picture.path.parent.name}/{picture.path.name}", picture.reads["ours"]
        if picture.text is None:
            yield f"{name}: no known text; read {reads}"
        elif picture.judge("ours") != (True, 0):
            others = [reader for reader in READERS[1:] if picture.judge(reader)[0]]
            yield f"{name}: {picture.text[:60]}, read {str(reads)[:160]}; right by {others}"


LIBRARIES = {"ZBar": zbar_here, "zxing-cpp": zxing_here}

if __name__ == "__main__":
    sys.exit(main())
