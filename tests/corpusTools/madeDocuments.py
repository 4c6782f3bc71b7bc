"""Makes documents of the kinds that people compress: photos, scans, screenshots, text, and all of it mixed.
The same each time, as far as Poppler draws the same."""

import random
import struct
import sys
import tempfile
import zlib
from dataclasses import dataclass
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "bench"))

from inputs import Prose, make_book, make_illustrated, make_plain
from pdfWriter import PdfWriter, add_page_tree, text

from corpusTools.outsideTools import run

A4 = (595, 842)
FLATE = "/Filter /FlateDecode"


@dataclass
class Image:
    """An image as it goes into a PDF, packed."""
    width: int
    height: int
    entries: str  # colour space, bits and filter
    data: bytes
    mask: "Image" = None


def make_all(folder, quick):
    """Makes the documents in the folder and returns their paths."""
    makers = {"photos": _photos, "album": _album, "cmyk": _cmyk, "greyScan": _grey_scan,
              "bitonalScan": _bitonal_scan, "screenshots": _screenshots, "mixed": _mixed,
              "letter": lambda path: make_plain(path, 12),
              "illustrated": lambda path: make_illustrated(path, 8),
              "book": lambda path: make_book(path, 100)}
    slow = ("album", "book")
    paths = []
    for name, make in makers.items():
        if not (quick and name in slow):
            paths.append(folder / f"{name}.pdf")
            make(paths[-1])
    return paths


def _photos(path):
    _write(path, [_page(_photo(seed, 2400, 1800, 85), (72, 300, 450, 338)) for seed in range(3)])


def _album(path):
    """Heavier than all limits but the last."""
    _write(path, [_page(_photo(seed, 4000, 3000, 95), (0, 0, 800, 600), (800, 600)) for seed in range(7)])


def _cmyk(path):
    photo = _photo(5, 1500, 1900, 88, "-jpegcmyk")
    _write(path, [_page(photo, (40, 60, 515, 720))])


def _grey_scan(path):
    pages = [_page(_scan(seed, quality=80), (0, 0, *A4)) for seed in range(2)]
    _write(path, [*pages, _page(_scan(2), (0, 0, *A4), rotate=90)])


def _bitonal_scan(path):
    """As black on white, as a stencil in blue, and with a palette."""
    width, height, rows = _pnm(_scan_file(3, "-mono"))
    inverted = bytes(255 - byte for byte in rows)  # 1 is black in the one and white in the other
    kinds = {"/ColorSpace /DeviceGray": inverted, "/ImageMask true /Decode [1 0]": rows,
             "/ColorSpace [/Indexed /DeviceRGB 1 <FFFFF0101060>]": rows}
    images = [Image(width, height, f"{kind} /BitsPerComponent 1 {FLATE}", zlib.compress(samples))
              for kind, samples in kinds.items()]
    _write(path, [_page(image, (0, 0, *A4), before="0 0 0.6 rg") for image in images])


def _screenshots(path):
    """Windows of flat colour: plain, with PNG predictors, with palettes of 256 and of 16, and see-through."""
    width, height = 1920, 1200
    places, colours = _windows(width, height)
    plain = b"".join(b"".join(bytes(colours[index]) for index in row) for row in places)
    rgb = "/ColorSpace /DeviceRGB /BitsPerComponent 8"
    up = f"{FLATE} /DecodeParms << /Predictor 15 /Colors 3 /Columns {width} >>"
    palette = "".join("%02X%02X%02X" % colour for colour in colours)
    by_eight = f"/ColorSpace [/Indexed /DeviceRGB {len(colours) - 1} <{palette}>] /BitsPerComponent 8 {FLATE}"
    nibbles = b"".join(bytes(a << 4 | b for a, b in zip(row[::2], row[1::2])) for row in places)
    mask = Image(width, height, f"/ColorSpace /DeviceGray /BitsPerComponent 8 {FLATE}",
                 zlib.compress(b"".join(bytes(255 if index else 90 for index in row) for row in places)))
    images = [Image(width, height, f"{rgb} {FLATE}", zlib.compress(plain)),
              Image(width, height, f"{rgb} {up}", zlib.compress(_with_up_predictor(plain, width * 3))),
              Image(width, height, by_eight, zlib.compress(b"".join(map(bytes, places)))),
              Image(width, height, by_eight.replace("Component 8", "Component 4"), zlib.compress(nibbles)),
              Image(width, height, f"{rgb} {FLATE}", zlib.compress(plain), mask)]
    _write(path, [_page(image, (0, 0, 960, 600), (960, 600), before="0.2 0.5 0.3 rg 0 0 500 600 re f")
                  for image in images])


def _mixed(path):
    """Text, a photo, a scan and a grainy picture that is not packed; turned and cropped pages."""
    raw = Image(700, 500, "/ColorSpace /DeviceRGB /BitsPerComponent 8", _grain(9, 700, 500))
    _write(path, [
        _page(_photo(11, 1800, 1200, 90), (72, 420, 450, 300), words=20),
        _page(_photo(12, 1200, 1600, 75), (150, 300, 300, 400), words=12, rotate=90),
        _page(raw, (100, 350, 400, 286), words=16, rotate=270, crop=(50, 100, 550, 800)),
        _page(_scan(13, quality=75), (60, 80, 480, 679), crop=(-20, 40, 580, 800), rotate=180),
        _page(None, None, words=45),
    ])


@dataclass
class _Page:
    image: Image
    content: str
    boxes: str


def _page(image, place, size=A4, words=0, rotate=0, crop=None, before=""):
    lines = "\n".join(f"{text(line)} Tj T*" for line in Prose(words + rotate).lines(words)) if words else ""
    parts = [before]
    if image:
        left, bottom, width, height = place
        parts.append(f"q {width} 0 0 {height} {left} {bottom} cm /Im Do Q")
    parts.append(f"0 g BT /F1 11 Tf 14 TL 72 {260 if image else 760} Td\n{lines}\nET")
    boxes = f"/MediaBox [0 0 {size[0]} {size[1]}]"
    if crop:
        boxes = (f"/MediaBox [-100 -100 {size[0] + 100} {size[1] + 100}] "
                 f"/CropBox [{' '.join(map(str, crop))}]")
    return _Page(image, "\n".join(parts), f"{boxes} /Rotate {rotate}")


def _write(path, pages):
    pdf = PdfWriter()
    numbers = [pdf.reserve() for _ in pages]
    font = pdf.add("<< /Type /Font /Subtype /Type1 /BaseFont /Times-Roman /Encoding /WinAnsiEncoding >>")
    bodies = []
    for number, page in zip(numbers, pages):
        images = f"/XObject << /Im {_add_image(pdf, page.image)} 0 R >>" if page.image else ""
        contents = pdf.add_stream(page.content)
        bodies.append((number, f"{page.boxes} /Resources << /Font << /F1 {font} 0 R >> {images} >> "
                               f"/Contents {contents} 0 R"))
    tree = add_page_tree(pdf, bodies)
    root = pdf.add(f"<< /Type /Catalog /Pages {tree} 0 R >>")
    pdf.write(path, root, pdf.add(f"<< /Title {text(path.stem)} >>"))


def _add_image(pdf, image):
    mask = f"/SMask {_add_image(pdf, image.mask)} 0 R" if image.mask else ""
    head = (f"<< /Type /XObject /Subtype /Image /Width {image.width} /Height {image.height} {image.entries} "
            f"{mask} /Length {len(image.data)} >>\nstream\n")
    return pdf.add(head.encode("latin-1") + image.data + b"\nendstream")


def _photo(seed, width, height, quality, kind="-jpeg"):
    """A JPEG of coloured blobs with soft edges and grain."""
    grain = Image(width // 3, height // 3, "/ColorSpace /DeviceRGB /BitsPerComponent 8",
                  _grain(seed, width // 3, height // 3))
    with tempfile.TemporaryDirectory() as folder:
        page = Path(folder) / "photo.pdf"
        _write(page, [_page(grain, (0, 0, width, height), (width, height))])
        jpeg = _render(page, folder, "72", kind, "-jpegopt", f"quality={quality}")
    space = "/DeviceCMYK /Decode [1 0 1 0 1 0 1 0]" if kind == "-jpegcmyk" else "/DeviceRGB"
    return Image(width, height, f"/ColorSpace {space} /BitsPerComponent 8 /Filter /DCTDecode", jpeg)


def _grain(seed, width, height):
    """Samples: slow waves of colour, edges, and noise on them."""
    chance = random.Random(seed)
    noise = chance.randbytes(width * height * 3)
    cells = [[[chance.randrange(200) for _ in range(3)] for _ in range(9)] for _ in range(7)]
    rows = []
    for y in range(height):
        down, low = divmod(y * 6, height)
        for x in range(width):
            across, left = divmod(x * 8, width)
            for at in range(3):
                above = cells[down][across][at] * (width - left) + cells[down][across + 1][at] * left
                below = cells[down + 1][across][at] * (width - left) + cells[down + 1][across + 1][at] * left
                rows.append((above * (height - low) + below * low) // (width * height))
    return bytes(value + (grain & 31) for value, grain in zip(rows, noise))


def _scan(seed, quality=None):
    """A page of text in grey at 200 dpi: a JPEG of that quality, or samples packed with Flate."""
    grey = "/ColorSpace /DeviceGray /BitsPerComponent 8"
    if quality:
        compression = ("-tiff", "-tiffcompression", "jpeg", "-jpegopt", f"quality={quality}")
        return Image(*_grey_jpeg(_scan_file(seed, "-gray", *compression)))
    width, height, samples = _pnm(_scan_file(seed, "-gray"))
    grain = random.Random(seed).randbytes(len(samples))
    noisy = bytes(max(0, value - (speck & 7)) for value, speck in zip(samples, grain))
    return Image(width, height, f"{grey} {FLATE}", zlib.compress(noisy))


def _grey_jpeg(tiff):
    """Width, height, entries and JPEG of a grey TIFF: Poppler writes grey JPEGs in no other file. Its strips,
    each coded for itself, become the parts between restart markers."""
    tags = _tiff_tags(tiff)
    width, height, rows = tags[256][0], tags[257][0], tags[278][0]
    strips = [tiff[start:start + length] for start, length in zip(tags[273], tags[279])]
    scan_start = strips[0].index(b"\xff\xda") + 10  # its header has 8 bytes with one component
    frame = strips[0].index(b"\xff\xc0")
    head = bytearray(bytes(tags[347])[:-2] + strips[0][frame:scan_start])  # the tables, without their end
    size_at = head.index(b"\xff\xc0") + 5
    head[size_at:size_at + 2] = struct.pack(">H", height)
    interval = (width + 7) // 8 * (rows // 8)
    head[2:2] = struct.pack(">HHH", 0xFFDD, 4, interval)
    scans = [strip[strip.index(b"\xff\xda") + 10:-2] for strip in strips]
    marked = b"".join(scan + bytes([0xFF, 0xD0 + at % 8]) for at, scan in enumerate(scans[:-1])) + scans[-1]
    entries = "/ColorSpace /DeviceGray /BitsPerComponent 8 /Filter /DCTDecode"
    return width, height, entries, bytes(head) + marked + b"\xff\xd9"


def _tiff_tags(tiff):
    """The values of each tag of bytes, shorts and longs."""
    formats = {1: "B", 3: "H", 4: "I", 7: "B"}
    start = struct.unpack_from("<I", tiff, 4)[0]
    tags = {}
    for at in range(struct.unpack_from("<H", tiff, start)[0]):
        entry = start + 2 + 12 * at
        tag, kind, count = struct.unpack_from("<HHI", tiff, entry)
        if kind in formats:
            layout = f"<{count}{formats[kind]}"
            is_near = struct.calcsize(layout) <= 4
            place = entry + 8 if is_near else struct.unpack_from("<I", tiff, entry + 8)[0]
            tags[tag] = struct.unpack_from(layout, tiff, place)
    return tags


def _scan_file(seed, *options):
    with tempfile.TemporaryDirectory() as folder:
        page = Path(folder) / "scan.pdf"
        prose = Prose(seed).lines(50)
        lines = "\n".join(f"{text(line)} Tj T*" for line in prose)
        content = f"BT /F1 12 Tf 14 TL 60 790 Td\n{lines}\nET 3 w 60 60 470 20 re S"
        _write(page, [_Page(None, content, f"/MediaBox [0 0 {A4[0]} {A4[1]}]")])
        return _render(page, folder, "200", *options)


def _render(page, folder, dpi, *options):
    run("pdftoppm", "-singlefile", "-r", dpi, *options, page, Path(folder) / "drawn")
    return next(path for path in Path(folder).iterdir() if path.stem == "drawn").read_bytes()


def _pnm(data):
    """Width, height and samples of a bitmap or greymap."""
    words = data.split(None, 4 if data.startswith(b"P5") else 3)
    width, height = int(words[1]), int(words[2])
    size = (width + 7) // 8 * height if data.startswith(b"P4") else width * height
    return width, height, data[-size:]


def _windows(width, height):
    """Rows of palette indexes, and the palette of 16."""
    chance = random.Random(width)
    colours = [(236, 238, 240)] + [tuple(chance.randrange(256) for _ in range(3)) for _ in range(15)]
    rows = [bytearray(width) for _ in range(height)]
    for _ in range(40):
        left, top = chance.randrange(width - 100), chance.randrange(height - 80)
        right = min(width, left + chance.randrange(60, 700))
        bottom = min(height, top + chance.randrange(20, 400))
        fill, edge = bytes([chance.randrange(16)]), bytes([chance.randrange(16)])
        for y in range(top, bottom):
            rows[y][left:right] = (edge if y < top + 18 or y == bottom - 1 else fill) * (right - left)
        for y in range(top + 24, bottom - 12, 14):
            _write_letters(chance, rows[y:y + 8], range(left + 8, right - 8, 6), edge)
    return rows, colours


def _write_letters(chance, rows, places, colour):
    """Strokes in most of the places, as much as a small line of text has."""
    for x in places:
        if chance.random() < 0.7:
            for row in rows:
                row[x:x + 2] = colour * 2


def _with_up_predictor(samples, stride):
    """Each row as its difference to the one above, as in PNG."""
    out, above = bytearray(), bytes(stride)
    for start in range(0, len(samples), stride):
        row = samples[start:start + stride]
        out += b"\x02" + bytes((a - b) & 255 for a, b in zip(row, above))
        above = row
    return bytes(out)
